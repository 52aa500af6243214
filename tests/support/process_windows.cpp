#include <windows.h>

#include <array>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <utility>

#include "platform/windows/handle.h"
#include "platform/windows/wide.h"
#include "support/process.h"

namespace tandril::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using platform::Handle;

void check(bool good, const std::string& what) {
    if (!good) {
        throw std::runtime_error(what + ": error " + std::to_string(::GetLastError()));
    }
}

SECURITY_ATTRIBUTES inheritable() {
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

// For a standard stream of a program that is about to start.
Handle openFor(const fs::path& path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES security = inheritable();
    Handle file(::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &security,
                              disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    check(file.valid(), "cannot open " + path.string());
    return file;
}

// A word as the C library of the program takes it from the command line: a quote has a backslash
// before it, and so have the backslashes before that one.
std::wstring quoted(const std::string& word) {
    std::wstring line = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : platform::toWide(word)) {
        if (character == L'"') line.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        line += character;
    }
    return line.append(backslashes, L'\\') + L"\" ";
}

// Programs are told to end by the console that they share with the test. Wine gives one that was
// started without a terminal something in its place, which has to go first.
bool takeConsole() {
    return ::GetConsoleCP() != 0 || (::FreeConsole() && ::AllocConsole());
}

struct Streams {
    HANDLE input;
    HANDLE output;
    HANDLE errors;
};

Handle spawn(const fs::path& program, const std::vector<std::string>& arguments,
             const Streams& streams) {
    std::wstring line = quoted(program.string());
    for (const std::string& word : arguments) {
        line += quoted(word);
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = streams.input;
    startup.hStdOutput = streams.output;
    startup.hStdError = streams.errors;
    static const bool hasConsole = takeConsole();
    check(hasConsole, "there is no console");
    PROCESS_INFORMATION process{};
    check(::CreateProcessW(fs::absolute(program).c_str(), line.data(), nullptr, nullptr, TRUE,
                           CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &startup, &process),
          "cannot start " + program.string());
    ::CloseHandle(process.hThread);
    return Handle(process.hProcess);
}

struct Pipe {
    Handle reading;
    Handle writing;
};

Pipe makePipe() {
    SECURITY_ATTRIBUTES security = inheritable();
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    check(::CreatePipe(&reading, &writing, &security, 0), "cannot make a pipe");
    return {Handle(reading), Handle(writing)};
}

ProcessEnd endOf(HANDLE process) {
    const auto time =
        std::chrono::duration_cast<std::chrono::milliseconds>(processPatience).count();
    check(::WaitForSingleObject(process, static_cast<DWORD>(time)) == WAIT_OBJECT_0,
          "the program does not end");
    DWORD status = 0;
    check(::GetExitCodeProcess(process, &status), "nobody knows how the program ended");
    return {static_cast<int>(status), 0};
}

}  // namespace

ProcessEnd runOnFiles(const fs::path& program, const std::vector<std::string>& arguments,
                      const StreamFiles& files) {
    const Handle in = openFor(files.input, GENERIC_READ, OPEN_EXISTING);
    const Handle out = openFor(files.output, FILE_APPEND_DATA, OPEN_ALWAYS);
    const Handle complaints = openFor(files.errors, FILE_APPEND_DATA, OPEN_ALWAYS);
    const Handle process = spawn(program, arguments, {in.get(), out.get(), complaints.get()});
    return endOf(process.get());
}

struct Process::State {
    Handle input;   // the end of a pipe that the test writes into
    Handle output;  // the end of one that it reads from
    Handle process;
};

Process::Process(const fs::path& program, const std::vector<std::string>& arguments) {
    Pipe input = makePipe();
    Pipe output = makePipe();
    const Handle complaints = openFor(folder_.pathOf("errors"), FILE_APPEND_DATA, OPEN_ALWAYS);
    // The program must not keep open the ends that the test will close.
    ::SetHandleInformation(input.writing.get(), HANDLE_FLAG_INHERIT, 0);
    ::SetHandleInformation(output.reading.get(), HANDLE_FLAG_INHERIT, 0);
    Handle process =
        spawn(program, arguments, {input.reading.get(), output.writing.get(), complaints.get()});
    state_ = std::make_unique<State>(
        State{std::move(input.writing), std::move(output.reading), std::move(process)});
}

Process::~Process() {
    closeInput();
    closeOutput();
    ::TerminateProcess(state_->process.get(), 1);
    ::WaitForSingleObject(state_->process.get(), INFINITE);
}

std::int64_t Process::id() const {
    return ::GetProcessId(state_->process.get());
}

void Process::write(std::string_view text) {
    DWORD written = 0;
    check(::WriteFile(state_->input.get(), text.data(), static_cast<DWORD>(text.size()), &written,
                      nullptr) &&
              written == text.size(),
          "cannot write to the program");
}

void Process::closeInput() {
    state_->input.close();
}

void Process::closeOutput() {
    state_->output.close();
}

// A pipe cannot be waited for, only looked into.
void Process::receive(Clock::time_point deadline) {
    DWORD available = 0;
    for (;;) {
        check(::PeekNamedPipe(state_->output.get(), nullptr, 0, nullptr, &available, nullptr),
              "the output ended; errors: " + errors());
        if (available != 0) break;
        check(Clock::now() < deadline, "no line came out; errors: " + errors());
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    std::array<char, 4096> chunk{};
    DWORD count = 0;
    check(::ReadFile(state_->output.get(), chunk.data(), static_cast<DWORD>(chunk.size()), &count,
                     nullptr),
          "cannot read what the program says");
    buffer_.append(chunk.data(), count);
}

void Process::tell(Stop how) const {
    if (how == Stop::Kill) {
        check(::TerminateProcess(state_->process.get(), 1), "cannot kill the program");
    } else {
        // Wine knows Ctrl-C alone.
        const DWORD group = ::GetProcessId(state_->process.get());
        check(::GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, group) ||
                  ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, group),
              "cannot tell the program to end");
    }
}

ProcessEnd Process::wait() {
    return endOf(state_->process.get());
}

}  // namespace tandril::test
