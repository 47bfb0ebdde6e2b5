// A program for tests that start programs: does what its arguments say, one after the other.
//
//     out TEXT, err TEXT   prints a line
//     fill BYTES           prints so many zero bytes
//     endless              prints without end
//     arguments ...        prints those that follow, each in angle brackets, and ends
//     copy                 prints what there is to read on standard input
//     touch FILE           makes an empty file
//     sleep MILLISECONDS
//     await FILE           waits until the file is there, at most a minute
//     close                closes both streams of output
//     leave ...            starts itself with the arguments that follow and does not wait for it (Windows)
//     crash                ends by a memory error
//     exit STATUS
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "base/text.h"
#include "platform/program_start.h"

#ifdef _WIN32
#include "platform/child_process_windows.h"
#include "platform/process_info.h"
#include "tests/support/quoting.h"
#endif

namespace velinor {
namespace {

void print(std::FILE* stream, const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

void copyInput() {
    for (int c = std::getchar(); c != EOF; c = std::getchar())
        std::putchar(c);
}

// Off Windows by a signal that nothing can catch: the sanitizers make an exit of a bad access.
void crash() {
#ifdef _WIN32
    volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
#else
    std::raise(SIGKILL);
#endif
}

void await(const std::filesystem::path& file) {
    for (int i = 0; i < 600 && !std::filesystem::exists(file); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
}

#ifdef _WIN32
// What it starts writes where this program writes.
void leaveRunning(const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{utf8Path(executablePath())};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    startChild(
        pathOfUtf8(quotedCommandLine(texts)).native(), nullptr,
        {GetStdHandle(STD_INPUT_HANDLE), GetStdHandle(STD_OUTPUT_HANDLE), GetStdHandle(STD_ERROR_HANDLE)});
}
#endif

// The arguments that are left.
class Script {
  public:
    explicit Script(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

    bool isOver() const { return at_ >= arguments_.size(); }
    std::vector<std::string> takeAll() {
        std::vector<std::string> rest;
        while (!isOver())
            rest.push_back(take());
        return rest;
    }
    std::string take() { return isOver() ? std::string() : arguments_[at_++]; }

  private:
    std::vector<std::string> arguments_;
    std::size_t at_ = 0;
};

void run(Script script) {
    while (!script.isOver()) {
        const std::string word = script.take();
        if (word == "out") print(stdout, script.take() + "\n");
        if (word == "err") print(stderr, script.take() + "\n");
        if (word == "fill") print(stdout, std::string(std::stoul(script.take()), '\0'));
        while (word == "endless")
            print(stdout, std::string(1000, 'y') + "\n");
        while (word == "arguments" && !script.isOver())
            print(stdout, "<" + script.take() + ">");
        if (word == "copy") copyInput();
        if (word == "touch") std::ofstream(pathOfUtf8(script.take())).flush();
        if (word == "sleep") std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(script.take())));
        if (word == "await") await(pathOfUtf8(script.take()));
        if (word == "close") {
            std::fclose(stdout);
            std::fclose(stderr);
        }
#ifdef _WIN32
        if (word == "leave") leaveRunning(script.takeAll());
#endif
        if (word == "crash") crash();
        if (word == "exit") std::exit(std::stoi(script.take()));
    }
}

}  // namespace
}  // namespace velinor

int main(int argc, char** argv) {
    const velinor::StandardStreams streams;
    velinor::run(velinor::Script(velinor::programArguments(argc, argv)));
    return 0;
}
