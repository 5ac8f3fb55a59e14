/** Memory that runs out on demand: malloc and its relatives for the whole program, operator new and OpenCV included. */
#pragma once

namespace kvx::test {

/**
 * Lets `count` allocations fail, from number `first` on, counted from 0. Those of the OpenMP runtime are not counted:
 * it ends the program when it has no memory.
 */
void FailAllocations(long first, long count);

/** Ends that. @return how many allocations failed */
long StopFailing();

/** Blocks allocated between FailAllocations() and StopFailing() and not freed yet. */
long LeakedBlocks();

}  // namespace kvx::test
