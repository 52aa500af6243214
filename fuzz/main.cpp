// The entry points of libFuzzer. Which target the program feeds is the flag --target=NAME; --list
// prints the names.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "home.h"
#include "mutation.h"
#include "target.h"

using tandril::fuzz::Target;

namespace {

std::vector<Target> allTargets() {
    std::vector<Target> all = tandril::fuzz::methodTargets();
    for (auto* const more :
         {&tandril::fuzz::callTargets, &tandril::fuzz::fileTargets, &tandril::fuzz::textTargets}) {
        for (Target& target : more()) {
            all.push_back(std::move(target));
        }
    }
    return all;
}

// The one that was chosen: libFuzzer calls plain functions, which share nothing else.
Target& chosen() {
    static Target target;
    return target;
}

const tandril::fuzz::Vocabulary& vocabulary() {
    static const auto words = tandril::fuzz::Vocabulary::of(tandril::fuzz::homeTexts());
    return words;
}

void choose(std::string_view name) {
    for (Target& target : allTargets()) {
        if (target.name == name) {
            chosen() = std::move(target);
        }
    }
}

void list() {
    for (const Target& target : allTargets()) {
        std::puts(target.name.c_str());
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    constexpr std::string_view flag = "--target=";
    for (int i = 1; i < *count; ++i) {
        const std::string_view argument = (*arguments)[i];
        if (argument == "--list") {
            list();
            std::exit(0);
        }
        if (argument.starts_with(flag)) {
            choose(argument.substr(flag.size()));
        }
    }
    if (!chosen().run) {
        std::fputs("name a target with --target=NAME; --list prints the names\n", stderr);
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    chosen().run({reinterpret_cast<const char*>(data), size});
    return 0;
}

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t limit);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t limit, unsigned seed) {
    std::minstd_rand random(seed);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // Bytes as they come find what is wrong with reading, whole elements what is wrong with
    // meaning.
    if (random() % 3 != 0) {
        const std::string changed = tandril::fuzz::mutate(text, vocabulary(), random);
        if (!changed.empty() && changed.size() <= limit && changed != text) {
            changed.copy(reinterpret_cast<char*>(data), changed.size());
            return changed.size();
        }
    }
    return LLVMFuzzerMutate(data, size, limit);
}

namespace tandril::fuzz {

void require(bool holds, std::string_view what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(what.size()), what.data());
        std::abort();
    }
}

}  // namespace tandril::fuzz
