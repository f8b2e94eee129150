#pragma once

#include <pthread.h>

namespace vantrel {

/// Writes where a thread of this process is, one function to a line, innermost first. It interrupts
/// the thread by a signal, so system calls of it may end early: for debugging only. Writes nothing
/// when the thread does not answer within a second. Thread: any other one, one call at a time.
void writeStackOfThread(pthread_t thread, int file);

/// From now on a crash writes "crash", the number of its signal and the stack to `file`, and then
/// takes its course, also when the calling thread's stack was used up. The file must stay open.
void writeStackAtCrash(int file);

} // namespace vantrel
