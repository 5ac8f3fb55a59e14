/** Memory that runs out when a test says so: malloc's family for the whole program, hence operator new and OpenCV too.
 */
#pragma once

namespace kvx::test {

/**
 * Which allocations from now on fail, counting from 0. Those of the OpenMP runtime do not count: without memory it ends
 * the program.
 */
void FailAllocations(long first, long count);

/** Memory for all again. @return how many allocations failed */
long StopFailing();

/** Blocks allocated between FailAllocations() and StopFailing() and not freed yet. */
long LeakedBlocks();

}  // namespace kvx::test
