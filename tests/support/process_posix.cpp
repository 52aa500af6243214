#include "support/process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

extern char** environ;

namespace tandril::test {
namespace {

namespace fs = std::filesystem;

void check(bool good, const std::string& what) {
    if (!good) {
        throw std::runtime_error(what);
    }
}

// What the three standard streams of a program are connected to.
class Redirections {
  public:
    Redirections() { posix_spawn_file_actions_init(&actions_); }
    ~Redirections() { posix_spawn_file_actions_destroy(&actions_); }
    Redirections(const Redirections&) = delete;
    Redirections& operator=(const Redirections&) = delete;

    void fromFile(int stream, const fs::path& path) {
        posix_spawn_file_actions_addopen(&actions_, stream, path.c_str(), O_RDONLY, 0);
    }
    void toFile(int stream, const fs::path& path) {
        posix_spawn_file_actions_addopen(&actions_, stream, path.c_str(),
                                         O_WRONLY | O_CREAT | O_APPEND, 0600);
    }
    void toDescriptor(int stream, int descriptor) {
        posix_spawn_file_actions_adddup2(&actions_, descriptor, stream);
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_;
};

pid_t spawn(const fs::path& program, const std::vector<std::string>& arguments,
            const Redirections& redirections) {
    std::vector<std::string> words{program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);

    // The test may ignore SIGPIPE; the program starts as from a shell.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    pid_t id = -1;
    const int error = posix_spawn(&id, program.c_str(), redirections.get(), &attributes,
                                  pointers.data(), environ);
    posix_spawnattr_destroy(&attributes);
    check(error == 0, "cannot start " + program.string());
    return id;
}

ProcessEnd decode(int status) {
    if (WIFSIGNALED(status)) {
        return {-1, WTERMSIG(status)};
    }
    return {WEXITSTATUS(status), 0};
}

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    check(::pipe2(ends.data(), O_CLOEXEC) == 0, "cannot make a pipe");
    return ends;
}

void closeOnce(int& descriptor) {
    if (descriptor >= 0) {
        ::close(descriptor);
        descriptor = -1;
    }
}

}  // namespace

ProcessEnd runOnFiles(const fs::path& program, const std::vector<std::string>& arguments,
                      const StreamFiles& files) {
    Redirections redirections;
    redirections.fromFile(STDIN_FILENO, files.input);
    redirections.toFile(STDOUT_FILENO, files.output);
    redirections.toFile(STDERR_FILENO, files.errors);
    const pid_t id = spawn(program, arguments, redirections);
    int status = 0;
    check(::waitpid(id, &status, 0) == id, "cannot wait for " + program.string());
    return decode(status);
}

struct Process::State {
    pid_t id = -1;
    int input = -1;
    int output = -1;
};

Process::Process(const fs::path& program, const std::vector<std::string>& arguments)
    : state_(std::make_unique<State>()) {
    const std::array<int, 2> input = makePipe();
    const std::array<int, 2> output = makePipe();
    Redirections redirections;
    redirections.toDescriptor(STDIN_FILENO, input[0]);
    redirections.toDescriptor(STDOUT_FILENO, output[1]);
    redirections.toFile(STDERR_FILENO, folder_.pathOf("errors"));
    state_->id = spawn(program, arguments, redirections);
    ::close(input[0]);
    ::close(output[1]);
    state_->input = input[1];
    state_->output = output[0];
}

Process::~Process() {
    closeInput();
    closeOutput();
    if (state_->id > 0) {
        ::kill(state_->id, SIGKILL);
        ::waitpid(state_->id, nullptr, 0);
    }
}

std::int64_t Process::id() const {
    return state_->id;
}

void Process::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(state_->input, text.data(), text.size());
        check(count > 0, "cannot write to the program");
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void Process::closeInput() {
    closeOnce(state_->input);
}

void Process::closeOutput() {
    closeOnce(state_->output);
}

void Process::receive(std::chrono::steady_clock::time_point deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    pollfd waiting{state_->output, POLLIN, 0};
    check(left.count() > 0 && ::poll(&waiting, 1, static_cast<int>(left.count())) == 1,
          "no line came out; errors: " + errors());
    std::array<char, 4096> chunk{};
    const ssize_t count = ::read(state_->output, chunk.data(), chunk.size());
    check(count > 0, "the output ended; errors: " + errors());
    buffer_.append(chunk.data(), static_cast<std::size_t>(count));
}

void Process::tell(Stop how) const {
    ::kill(state_->id, how == Stop::Interrupt   ? SIGINT
                       : how == Stop::Terminate ? SIGTERM
                                                : SIGKILL);
}

ProcessEnd Process::wait() {
    const auto end = std::chrono::steady_clock::now() + processPatience;
    int status = 0;
    while (::waitpid(state_->id, &status, WNOHANG) == 0) {
        check(std::chrono::steady_clock::now() < end, "the program does not end");
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    state_->id = -1;
    return decode(status);
}

}  // namespace tandril::test
