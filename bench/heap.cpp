#include "bench/heap.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstring>
#include <fstream>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tandril::bench {

// Not by malloc: freeing a large block makes it keep more from then on.
void startWithEmptyHeap(std::size_t bytes) {
    malloc_trim(0);
    void* const touched =
        ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (touched == MAP_FAILED) {
        throw std::bad_alloc();
    }
    std::memset(touched, 'x', bytes);
    ::munmap(touched, bytes);
}

double peakMegabytes() {
    constexpr std::string_view label = "VmHWM:";
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(label)) {
            return std::stod(line.substr(label.size())) * 1024 / 1e6;
        }
    }
    throw std::runtime_error("the system does not tell the peak of memory");
}

void forgetPeak() {
    constexpr const char* peakOnly = "5";
    std::ofstream references("/proc/self/clear_refs");
    references << peakOnly << std::flush;
    if (!references) {
        throw std::runtime_error("the system does not forget the peak of memory");
    }
}

}  // namespace tandril::bench
