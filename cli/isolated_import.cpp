#include "cli/isolated_import.h"

#include <charconv>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {
namespace {

// What a message of the importing process is about: its first byte.
enum class Kind : char {
    phase = 'p',     // total, line feed, name
    advance = 'a',   // amount
    note = 'n',      // size of the subject, line feed, subject, text
    error = 'e',     // text
    snapshot = 's',  // CBOR
};

std::uint64_t takeNumber(std::string_view& text) {
    std::uint64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    if (text.starts_with('\n')) text.remove_prefix(1);
    return number;
}

// The importing side of the pipe.
class Sender final : public Progress {
  public:
    Sender(const SendMessage& send, const IsolationLimits& limits) : send_(send), limits_(limits) {}

    void beginPhase(std::string_view name, std::uint64_t total) override {
        renewProcessorTime(limits_);
        sendAdvance();
        send(Kind::phase, std::to_string(total) + "\n" + std::string(name));
    }

    // Small steps are gathered: a message for each would cost more than the work.
    void advance(std::uint64_t amount) override {
        constexpr int kStepsAMessage = 1000;
        if (amount > 0) renewProcessorTime(limits_);
        pending_ += amount;
        if (++steps_ % kStepsAMessage == 0) sendAdvance();
    }

    void send(Kind kind, std::string_view text) const {
        std::string message(1, static_cast<char>(kind));
        message += text;
        send_(message);
    }

  private:
    void sendAdvance() {
        if (pending_ > 0) send(Kind::advance, std::to_string(pending_));
        pending_ = 0;
    }

    const SendMessage& send_;
    const IsolationLimits& limits_;
    std::uint64_t pending_ = 0;
    unsigned steps_ = 0;
};

// Runs in the importing process.
void import(const std::filesystem::path& file, const AssimpOptions& options, const IsolationLimits& limits,
            const SendMessage& send) {
    Sender sender(send, limits);
    try {
        ImportNotes notes;
        const SceneSnapshot scene = readWithAssimp(file, options, sender, notes);
        for (const auto& [subject, text] : notes.notes()) {
            std::string note = std::to_string(subject.size()) + "\n";
            note += subject;
            note += text;
            sender.send(Kind::note, note);
        }
        sender.send(Kind::snapshot, writeSnapshot(scene, SnapshotEncoding::cbor));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        sender.send(Kind::error, error.what());
    }
}

// The receiving side of the pipe.
struct Receiver {
    Progress& progress;
    ImportNotes& notes;
    std::string phase{};
    std::string snapshot{};
    std::optional<std::string> error{};

    void receive(std::string_view message) {
        const auto kind = static_cast<Kind>(message.front());
        message.remove_prefix(1);
        switch (kind) {
            case Kind::phase: {
                const std::uint64_t total = takeNumber(message);
                phase = message;
                return progress.beginPhase(phase, total);
            }
            case Kind::advance:
                return progress.advance(takeNumber(message));
            case Kind::note: {
                const std::uint64_t subjectSize = takeNumber(message);
                return notes.add(message.substr(0, subjectSize), message.substr(subjectSize));
            }
            case Kind::error:
                error = message;
                return;
            case Kind::snapshot:
                snapshot = message;
                return;
        }
    }
};

std::string whatHappened(const IsolatedRun& run, const IsolationLimits& limits) {
    using End = IsolatedRun::End;
    const std::string advice = "; open the scene where it was made and save it again";
    switch (run.end) {
        case End::timeLimit:
            return "a step of reading took more than " + std::to_string(limits.processorSeconds) +
                   " seconds of processor time, so the file is damaged or very large" + advice;
        case End::memoryLimit:
            return "reading needs more than " + std::to_string(limits.memoryBytes >> 20U) +
                   " MiB of memory, so the file is damaged or very large" + advice;
        default:
            return "the importer crashed on this file" +
                   (run.signal == 0 ? std::string() : " (signal " + std::to_string(run.signal) + ")") +
                   ", so it is damaged or of an unknown kind" + advice;
    }
}

}  // namespace

SceneSnapshot importIsolated(const std::filesystem::path& file, const AssimpOptions& options,
                             Progress& progress, ImportNotes& notes, const IsolationLimits& limits) {
    Receiver receiver{progress, notes};
    const IsolatedRun run = runIsolated([&](const SendMessage& send) { import(file, options, limits, send); },
                                        [&](std::string_view message) { receiver.receive(message); }, limits,
                                        [&progress] { progress.advance(0); });
    progress.advance(0);  // what stops this process may have stopped the other one first
    if (receiver.error) throw SceneError(*receiver.error);
    const std::string name = narrowPath(file);
    if (run.end != IsolatedRun::End::finished || receiver.snapshot.empty()) {
        throw SceneError(name + ": " + whatHappened(run, limits));
    }
    return readSnapshot(receiver.snapshot, SnapshotEncoding::cbor, name);
}

}  // namespace velinor
