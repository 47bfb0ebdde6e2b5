#include "plugin/scene_export_max.h"

#include <new>

#include "hosts/max/max_values.h"
#include "plugin/export_session_max.h"

namespace velinor {

MaxSceneExport::MaxSceneExport() : session_(std::make_unique<ExportSession>()) {}
MaxSceneExport::~MaxSceneExport() = default;

int MaxSceneExport::ExtCount() {
    return session_->exporter().ExtCount();
}
const MCHAR* MaxSceneExport::Ext(int n) {
    return maxText(session_->exporter().Ext(n));
}
const MCHAR* MaxSceneExport::LongDesc() {
    return maxText(session_->exporter().LongDesc());
}
const MCHAR* MaxSceneExport::ShortDesc() {
    return maxText(session_->exporter().ShortDesc());
}
const MCHAR* MaxSceneExport::AuthorName() {
    return maxText(session_->exporter().AuthorName());
}
const MCHAR* MaxSceneExport::CopyrightMessage() {
    return maxText(session_->exporter().CopyrightMessage());
}
const MCHAR* MaxSceneExport::OtherMessage1() {
    return maxText(session_->exporter().OtherMessage1());
}
const MCHAR* MaxSceneExport::OtherMessage2() {
    return maxText(session_->exporter().OtherMessage2());
}
unsigned int MaxSceneExport::Version() {
    return session_->exporter().Version();
}
void MaxSceneExport::ShowAbout(HWND owner) {
    session_->exporter().ShowAbout(owner);
}
BOOL MaxSceneExport::SupportsOptions(int ext, DWORD options) {
    return session_->exporter().SupportsOptions(ext, static_cast<std::uint32_t>(options));
}

int MaxSceneExport::DoExport(const MCHAR* name, ::ExpInterface* /*ei*/, ::Interface* /*i*/,
                             BOOL suppressPrompts, DWORD /*options*/) {
    session_->run(hostText(name), suppressPrompts != 0);
    return IMPEXP_SUCCESS;
}

}  // namespace velinor
