/// How the process takes turns with itself and others on the processors.
#pragma once

namespace ZorvNode {

/// From now on no thread of the process interrupts another at the moment it is woken; it waits until that one pauses, a few
/// milliseconds at most. An alarm goes through several threads: on few processors each interruption costs more than it
/// gives. (sched(7), SCHED_BATCH.) Whoever has given the process another policy keeps it.
///
/// Threads: before the others are made; they inherit it.
/// Failure: none; the turns stay as they are.
void interruptNobody();

}  // namespace ZorvNode
