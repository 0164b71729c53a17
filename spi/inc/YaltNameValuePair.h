/**
 * One entry of an event filter. Filters travel as null-terminated arrays of pointers to entries.
 */
#ifndef YALT_NAME_VALUE_PAIR_H
#define YALT_NAME_VALUE_PAIR_H

typedef struct YaltNameValuePair {
    const char* name;  /**< filter type; null reads as empty */
    const char* value; /**< filter argument; null reads as empty */
} YaltNameValuePair;

#endif
