#!/usr/bin/env bash
# tools/check on a small tree that is well, and on the same tree with one thing wrong at a time.
# shellcheck source=harness.sh
. "$(dirname "$0")/harness.sh"

# good_tree: a tree of two layers that every check accepts.
good_tree() {
    new_tree tools/check tools/check-imports tools/check-header tools/check-docs .clang-format
    git -C "$tree" init -q
    put src/xml/node.h <<'CODE'
#pragma once

#include <string>

#include "platform/fault.h"

namespace tandril {

std::string name(const Fault& fault);

}  // namespace tandril
CODE
    put src/platform/fault.h <<'CODE'
#pragma once

namespace tandril {

struct Fault {};

}  // namespace tandril
CODE
    put docs/behaviour.md <<'TEXT'
# Behaviour

`Initialize()` is described [here](#behaviour), and [there](page.md#the-page).
TEXT
    printf '# The page\n' | put docs/page.md
    put src/component/methods.cpp <<'CODE'
// row<&C::Initialize>(1, "Initialize"),
CODE
}

# fails CHECK, accepts CHECK: what the check says of the tree as it stands.
fails() {
    run tools/check "$1"
    exit_status_is 1 && last_line_is "FAIL $1"
}
accepts() {
    run tools/check "$1"
    exit_status_is 0 && last_line_is "OK   $1"
}

# append FILE TEXT
append() { printf '%b' "$2" >>"$tree/$1"; }

good_tree
for check in format whitespace length imports headers shell docs; do
    ok "GoodTreePasses_$check" accepts $check
done

good_tree
append src/xml/node.h 'int  f( );\n'
ok "UnformattedSourceFails" fails format

good_tree
append docs/page.md 'blank at the end \n'
ok "TrailingBlankFails" fails whitespace
ok "TrailingBlankIsNamed" printed "docs/page.md:2:"

good_tree
append docs/page.md '\ttab\n'
ok "TabFails" fails whitespace

good_tree
append docs/page.md 'line\r\n'
ok "CarriageReturnFails" fails whitespace

good_tree
append docs/page.md 'no line end'
ok "MissingLineEndFails" fails whitespace

good_tree
append tests/golden/recorded.txt 'as it was \r\n' 2>/dev/null || { mkdir -p "$tree/tests/golden" &&
    append tests/golden/recorded.txt 'as it was \r\n'; }
ok "RecordedDataKeepsItsBytes" accepts whitespace

good_tree
append src/xml/node.h "$(printf '%0401d' 0 | sed 's/0/\/\/ more\\n/g')"
ok "LongFileFails" fails length
ok "LongFileIsNamed" printed "src/xml/node.h: 412 lines"

good_tree
append src/platform/fault.h '#include "xml/node.h"\n'
ok "ImportFromAboveFails" fails imports
ok "ImportFromAboveIsNamed" printed "src/platform/fault.h:8: platform is below xml"

good_tree
append src/xml/node.h '#include "xml/other.h"\n'
ok "ImportOfMissingHeaderFails" fails imports

good_tree
mkdir -p "$tree/src/views" "$tree/src/forms"
append src/views/list.h '#pragma once\n'
append src/forms/form.h '#pragma once\n#include "views/list.h"\n'
ok "ImportBetweenNeighboursFails" fails imports

good_tree
mkdir -p "$tree/src/misc"
append src/misc/misc.h '#pragma once\n'
ok "UnknownFolderFails" fails imports

good_tree
append src/xml/node.h '#ifdef _WIN32\n#endif\n'
ok "ConditionOutsideThePlatformFails" fails imports

good_tree
mkdir -p "$tree/src/platform/linux"
append src/platform/linux/disk.cpp '#if defined(__linux__)\n#endif\n'
ok "ConditionInsideThePlatformPasses" accepts imports

good_tree
rm -r "$tree/src"
ok "NoSourcesAtAllFails" fails imports

good_tree
append src/xml/node.h 'std::vector<int> positions();\n'
ok "HeaderThatNeedsAnotherFails" fails headers
ok "HeaderThatNeedsAnotherIsNamed" printed "src/xml/node.h does not compile alone"

good_tree
sed -i 1d "$tree/src/platform/fault.h"
ok "HeaderIncludedTwiceFails" fails headers

# built_tree: the build has compiled the source beside a header that does not compile alone.
built_tree() {
    good_tree
    append src/xml/node.h 'std::vector<int> positions();\n'
    printf '#include "xml/node.h"\n' | put src/xml/node.cpp
    put build/release/src/xml/CMakeFiles/tandril_xml.dir/node.cpp.o </dev/null
}

built_tree
ok "HeaderThatTheBuildShowedToCompileIsNotCompiledAgain" accepts headers

built_tree
touch -d '1 minute' "$tree/src/xml/node.h"
ok "HeaderThatChangedSinceTheBuildIsCompiled" fails headers

built_tree
printf '#include <vector>\n#include "xml/node.h"\n' | put src/xml/node.cpp
ok "HeaderThatItsSourceDoesNotIncludeFirstIsCompiled" fails headers

built_tree
sed -i 1d "$tree/src/xml/node.h"
touch "$tree/build/release/src/xml/CMakeFiles/tandril_xml.dir/node.cpp.o"
ok "HeaderIncludedOnceByItsSourceIsCompiled" fails headers

good_tree
# shellcheck disable=SC2016  # the fault is in the quoted script
append tools/bad '#!/bin/sh\nrm -r $1\n'
ok "UnquotedVariableFails" fails shell

good_tree
append docs/page.md '[lost](../missing.md)\n'
ok "LinkToAMissingFileFails" fails docs
ok "LinkToAMissingFileIsNamed" printed "docs/page.md: ../missing.md: there is no such file"

good_tree
append docs/page.md '[lost](behaviour.md#nothing)\n'
ok "LinkToAMissingHeadingFails" fails docs

# example CALL: a page with a script in which it stands
example() {
    good_tree
    append docs/page.md '```js\n'"$1"'\n```\n'
}
for call in 'client.Initialize()' 'Initialize(1)' 'x.client.Lost()' 'if (client.Initialize () != "") {}'; do
    example "$call"
    ok "ExampleIsRight_$call" accepts docs
done
for call in 'client.Initialize(1)' 'client.Initialize name' 'client.Initialize(f(1, 2), "a")'; do
    example "$call"
    ok "WrongArgumentsFail_$call" fails docs
done
ok "WrongArgumentsAreCounted" printed "docs/page.md: client.Initialize: 2 arguments in place of 0"
example 'client.initialize()'
ok "CallOfNoMethodFails" fails docs
ok "CallOfNoMethodIsNamed" printed "docs/page.md: client.initialize: there is no such method"

good_tree
append src/component/methods.cpp '// row<&C::ListOrders>(17, "ListOrders"),\n'
ok "UndescribedMethodFails" fails docs
ok "UndescribedMethodIsNamed" printed "docs/behaviour.md: ListOrders is missing"

good_tree
ok "TidyWithoutABuildFails" fails tidy

# analysed_tree: a build that compiles one source by itself and two joined.
analysed_tree() {
    good_tree
    cp "$project/.clang-tidy" "$tree/"
    local name joined=build/release/src/xml/CMakeFiles/tandril_xml.dir/Unity/unity_0_cxx.cxx
    for name in alone first second; do
        printf 'namespace tandril::%s {\n\nint* none() { return nullptr; }\n\n}  // namespace tandril::%s\n' \
            $name $name | put src/xml/$name.cpp
    done
    printf '#include "%s"\n' "$tree/src/xml/first.cpp" "$tree/src/xml/second.cpp" | put $joined
    for name in src/xml/alone.cpp $joined; do
        printf '{ "directory": "%s",\n  "command": "c++ -std=c++20 -c %s",\n  "file": "%s" }\n' "$tree" "$name" "$tree/$name"
    done | sed '1s/^/[/; 3s/$/,/; $s/$/]/' | put build/release/compile_commands.json
}

analysed_tree
ok "AnalysedTreePasses" accepts tidy
for name in alone first second; do
    sed -i 's/nullptr/0/' "$tree/src/xml/$name.cpp"
    touch -d '1 minute' "$tree/src/xml/$name.cpp"
    ok "MistakeInAChangedSourceFails_$name" fails tidy
    ok "MistakeIsNamed_$name" printed "src/xml/$name.cpp:3:"
    sed -i 's/0/nullptr/' "$tree/src/xml/$name.cpp"
done
ok "SourcesThatAreWellAgainPass" accepts tidy
for name in alone second; do
    analysed_tree
    sed -i 's/nullptr/0/' "$tree/src/xml/$name.cpp"
    ok "MistakeFailsTheFirstTime_$name" fails tidy
done

good_tree
run tools/check spelling
ok "UnknownCheckIsRefused" exit_status_is 2
ok "UnknownCheckShowsTheKnown" printed "there are: format whitespace"

good_tree
append docs/page.md ' \n'
run tools/check whitespace imports
ok "OneFailureFailsTheWhole" exit_status_is 1
ok "OtherChecksStillRun" printed "OK   imports"

done_testing
