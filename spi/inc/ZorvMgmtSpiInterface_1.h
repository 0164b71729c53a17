/**
 * Identity of an interface that a component offers or requires.
 */
#ifndef ZORV_MGMT_SPI_INTERFACE_1_H
#define ZORV_MGMT_SPI_INTERFACE_1_H

/**
 * Frozen layout. The texts belong to whoever declares the identity and outlive every use of it.
 */
typedef struct ZorvMgmtSpiInterface_1 {
    const char* componentName;    /**< provider; null: any component may provide it */
    const char* interfaceName;    /**< never null */
    const char* interfaceVersion; /**< null: the interface has one version only */
} ZorvMgmtSpiInterface_1;

#endif
