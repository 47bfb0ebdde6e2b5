#include "hosts/max/max_sdk.h"

#include "plugin/host_messages_max.h"

#include "base/text.h"
#include "hosts/max/max_values.h"
#include "plugin/report_text_max.h"
#include "plugin/resource.h"

namespace velinor {
namespace {

constexpr const char16_t* kTitle = u"" TOLVEX_EXPORTER_NAME;

DWORD logTypeOf(Severity severity) {
    if (severity == Severity::error) return SYSLOG_ERROR;
    return severity == Severity::warning ? SYSLOG_WARN : SYSLOG_INFO;
}

void logLine(::LogSys& log, DWORD type, const std::string& utf8) {
    log.LogEntry(type, NO_DIALOG, maxText(kTitle), maxText(u"%ls"), maxText(toUtf16Lossy(utf8).c_str()));
}

}  // namespace

void logReport(const Report& report) {
    ::Interface* core = ::GetCOREInterface();
    ::LogSys* log = core == nullptr ? nullptr : core->Log();
    if (log == nullptr) return;
    for (const WrittenFile& file : report.written())
        logLine(*log, SYSLOG_INFO, utf8Path(file.path) + ": " + std::to_string(file.bytes) + " bytes");
    for (const ReportEntry& entry : report.entries())
        logLine(*log, logTypeOf(message(entry.id).severity), reportLine(entry));
}

void showReport(const Report& report) {
    constexpr UINT kErrorIcon = 0x10;
    constexpr UINT kWarningIcon = 0x30;
    const std::string text = reportMessage(report);
    if (text.empty()) return;
    ::Interface* core = ::GetCOREInterface();
    const UINT icon = report.count(Severity::error) > 0 ? kErrorIcon : kWarningIcon;
    MaxSDK::MaxMessageBox(core == nullptr ? nullptr : core->GetMAXHWnd(), maxText(toUtf16Lossy(text).c_str()),
                          maxText(kTitle), icon);
}

}  // namespace velinor
