#pragma once

#include <cstddef>

namespace tandril::bench {

// Makes what follows find memory as a new process does: the heap holds nothing from what ran
// before, and `bytes` of the system's free memory were in use a moment ago.
//
// A heap that is still there favours what is small enough to fit into it. And the host of a virtual
// machine takes pages away that were free for a while, and gives them back when they are touched,
// which takes several times as long as the page fault itself: no cost of what is measured, and one
// that falls on large stores alone.
void startWithEmptyHeap(std::size_t bytes);

// The most memory that this program has had since it last forgot its peak. Of this program alone:
// what getrusage tells begins with that of the program that started it.
double peakMegabytes();
void forgetPeak();

}  // namespace tandril::bench
