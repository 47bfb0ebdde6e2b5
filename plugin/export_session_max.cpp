#include "plugin/export_session_max.h"

#include <clocale>
#include <filesystem>
#include <new>
#include <system_error>

#include "base/normal_path.h"
#include "base/text.h"
#include "materials/image_library.h"
#include "platform/error_text.h"
#include "platform/path_text.h"
#include "platform/process_info.h"
#include "plugin/file_error_text.h"
#include "plugin/host_messages_max.h"
#include "plugin/module_max.h"

namespace velinor {
namespace {

// Does what should be done at the end of an export if it can be, whatever happened before.
template <class Work>
void quietly(const Work& work) {
    try {
        work();
    } catch (...) {
        return;
    }
}

constexpr FullFolderAdvice kAdvice{
    "a package is there already: delete the folder or choose another name",
    "a folder with other files is there: choose another name",
};

}  // namespace

ExportSession::ExportSession()
    : tools_([this] { progress_.advance(0); }),
      exporter_({host_, report_, progress_, tools_, &dialog_, executablePath()}) {}

void ExportSession::run(host::HostText name, bool isPromptSuppressed) {
    const std::exception_ptr escaping = exportTo(name, isPromptSuppressed);
    finish();
    quietly([&] { logReport(report_); });
    if (!isPromptSuppressed) quietly([&] { showReport(report_); });
    if (escaping) std::rethrow_exception(escaping);
}

// What is for the host to know is answered. Failures of the exporter's own end here: the host has no means to
// deal with them.
std::exception_ptr ExportSession::exportTo(host::HostText name, bool isPromptSuppressed) {
    try {
        report_ = Report();
        exportNow(std::u16string(name), isPromptSuppressed);
    } catch (const ExportStopped&) {
        fail(MessageId::exportStopped, "");
    } catch (const std::filesystem::filesystem_error& error) {
        quietly([&] { fail(MessageId::exportFailed, fileErrorText(error, kAdvice)); });
        return std::current_exception();
    } catch (const ::TabOutOfRangeException&) {
        fail(MessageId::exportFailed, "a list of the host is shorter than it should be");
        return std::current_exception();
    } catch (const std::bad_alloc&) {
        fail(MessageId::exportFailed, "there is not enough memory");
    } catch (const std::system_error& error) {
        quietly([&] { fail(MessageId::exportFailed, errorText(error.code())); });
    } catch (const std::exception& error) {
        fail(MessageId::exportFailed, error.what());
    } catch (...) {
        fail(MessageId::exportFailed, "the host broke it off");
        return std::current_exception();
    }
    return nullptr;
}

void ExportSession::exportNow(const std::u16string& name, bool isPromptSuppressed) {
    if (name.empty()) return fail(MessageId::exportFailed, "the host names no file");
    std::setlocale(LC_ALL, "C");  // as the export does; narrow forms go by it
    // The tools run elsewhere, and could not use a relative path.
    const std::filesystem::path target = absolutePath(toPath(name));
    // The tools and the scripts could not name files there.
    if (!hasNarrowForm(target)) {
        return fail(
            MessageId::exportFailed,
            "the path has characters that the system's code page lacks; choose another folder or name");
    }
    const auto fault = imageLibraryFault(modulePath().parent_path() / "tolvex");
    if (fault) return fail(MessageId::imageLibraryMissing, *fault);
    const std::u16string text = toUtf16Lossy(utf8Path(target));
    exporter_.DoExport(text.c_str(), nullptr, nullptr, isPromptSuppressed ? 1 : 0, 0);
}

// Also for want of memory, so it takes none of its own for the call.
void ExportSession::fail(MessageId id, std::string_view detail) {
    quietly([&] { report_.add(id, "tolvex", std::string(detail)); });
}

// Handles of the scene are worth nothing from here on.
void ExportSession::finish() {
    exporter_.context.nodes.clear();
    exporter_.context.materialMap.clear();
    exporter_.context.scene = nullptr;
    tools_.remove();
    quietly([this] { host_.release(); });
    quietly([this] { progress_.end(); });
}

}  // namespace velinor
