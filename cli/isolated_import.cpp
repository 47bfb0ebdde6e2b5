#include "cli/isolated_import.h"

#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"
#include "cli/command_error.h"
#include "cli/failure.h"
#include "cli/scene_handover.h"
#include "cli/sized_text.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

// What a message of the importing process is about: its first byte.
enum class Kind : char {
    phase = 'p',    // total, line feed, name
    advance = 'a',  // amount
    note = 'n',     // size of the subject, line feed, subject, text
    hint = 'h',     // as a note
    error = 'e',    // of the scene file: text
    failure = 'f',  // of the file system: text
    scene = 's',    // packed
};

// What the importing process has to know.
struct Request {
    std::filesystem::path file;
    AssimpOptions options;
    IsolationLimits limits;
};

std::string bytesOf(const Request& request) {
    std::string bytes;
    appendText(bytes, utf8Path(request.file));
    appendText(bytes, std::to_string(request.limits.memoryBytes));
    appendText(bytes, std::to_string(request.limits.processorSeconds));
    appendText(bytes, !request.options.upAxis ? "" : *request.options.upAxis == UpAxis::y ? "y" : "z");
    appendText(bytes, utf8Path(request.options.imageFolder.value_or(std::filesystem::path())));
    for (const std::filesystem::path& folder : request.options.assetFolders)
        appendText(bytes, utf8Path(folder));
    return bytes;
}

Request requestOf(std::string_view bytes) {
    const auto takeAsNumber = [&bytes] {
        std::string_view text = takeText(bytes);
        return takeNumber(text);
    };
    Request request;
    request.file = pathOfUtf8(takeText(bytes));
    request.limits.memoryBytes = takeAsNumber();
    request.limits.processorSeconds = static_cast<unsigned>(takeAsNumber());
    const std::string_view upAxis = takeText(bytes);
    if (!upAxis.empty()) request.options.upAxis = upAxis == "y" ? UpAxis::y : UpAxis::z;
    const std::string_view imageFolder = takeText(bytes);
    if (!imageFolder.empty()) request.options.imageFolder = pathOfUtf8(imageFolder);
    while (!bytes.empty())
        request.options.assetFolders.push_back(pathOfUtf8(takeText(bytes)));
    return request;
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
void import(std::string_view input, const SendMessage& send) {
    const Request request = requestOf(input);
    Sender sender(send, request.limits);
    try {
        ImportNotes notes;
        SceneSnapshot scene = readWithAssimp(request.file, request.options, sender, notes);
        for (const ImportNote& note : notes.notes()) {
            std::string bytes;
            appendText(bytes, note.subject);
            sender.send(note.isLoss ? Kind::note : Kind::hint, bytes + note.text);
        }
        sender.send(Kind::scene, packedScene(std::move(scene)));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::filesystem::filesystem_error& error) {
        sender.send(Kind::failure, failureOf(error).text);
    } catch (const std::exception& error) {
        sender.send(Kind::error, error.what());
    }
}

const IsolatedWork kImport("import-scene", import);

// The receiving side of the pipe.
struct Receiver {
    Progress& progress;
    ImportNotes& notes;
    std::string phase{};
    std::string scene{};
    std::optional<std::string> error{};
    std::optional<std::string> failure{};

    void receive(std::string_view message) {
        if (message.empty()) return;  // from memory that the file has spoilt
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
            case Kind::note:
            case Kind::hint: {
                const std::string_view subject = takeText(message);
                return notes.add({std::string(subject), std::string(message), kind == Kind::note});
            }
            case Kind::error:
                error = message;
                return;
            case Kind::failure:
                failure = message;
                return;
            case Kind::scene:
                scene = message;
                return;
        }
    }
};

std::string whatHappened(const IsolatedRun& run, const IsolationLimits& limits) {
    using End = IsolatedRun::End;
    const std::string advice = "; open the scene where it was made and save it again";
    const auto orAllowMore = [&advice](const char* option) {
        return advice + ", or, if it is good, allow more with --" + option;
    };
    switch (run.end) {
        case End::timeLimit:
            return "a step of reading took more than " + std::to_string(limits.processorSeconds) +
                   (limits.processorSeconds == 1 ? " second" : " seconds") +
                   " of processor time, so the file is damaged or very large" +
                   orAllowMore("import-time-limit");
        case End::memoryLimit:
            return "reading needs more than " + std::to_string(limits.memoryBytes >> 20U) +
                   " MiB of memory, so the file is damaged or very large" +
                   orAllowMore("import-memory-limit");
        default:
            return "the importer crashed on this file" +
                   (run.cause.empty() ? std::string() : " (" + run.cause + ")") +
                   ", so it is damaged or holds what the importer cannot read" + advice +
                   ", or in another format";
    }
}

}  // namespace

SceneSnapshot importIsolated(const std::filesystem::path& file, const AssimpOptions& options,
                             Progress& progress, ImportNotes& notes, const IsolationLimits& limits) {
    Receiver receiver{progress, notes};
    const IsolatedRun run = runIsolated(
        kImport, bytesOf({file, options, limits}),
        [&](std::string_view message) { receiver.receive(message); }, limits,
        [&progress] { progress.advance(0); });
    progress.advance(0);  // what stops this process may have stopped the other one first
    if (receiver.error) throw SceneError(*receiver.error);
    if (receiver.failure) throw CommandError(kFailed, *receiver.failure);
    const std::string name = utf8Path(file);
    if (run.end != IsolatedRun::End::finished || receiver.scene.empty()) {
        throw SceneError(name + ": " + whatHappened(run, limits));
    }
    return unpackedScene(receiver.scene, name);
}

}  // namespace velinor
