#include "plugin/exporter.h"

#include "plugin/version.h"

namespace velinor {

int tolvex::ExtCount() {
    return 1;
}
const host::MCHAR* tolvex::Ext(int /*n*/) {
    return u"JSX";
}
const host::MCHAR* tolvex::LongDesc() {
    return u"Velinor scene descriptor .jsx and complimentary files";
}
const host::MCHAR* tolvex::ShortDesc() {
    return u"Qen scene";
}
const host::MCHAR* tolvex::AuthorName() {
    return u"Brevant Ltd.";
}
const host::MCHAR* tolvex::CopyrightMessage() {
    return u"";
}
const host::MCHAR* tolvex::OtherMessage1() {
    return u"";
}
const host::MCHAR* tolvex::OtherMessage2() {
    return u"";
}
unsigned int tolvex::Version() {
    return TOLVEX_VERSION_MAJOR * 100 + TOLVEX_VERSION_MINOR;
}
void tolvex::ShowAbout(void* /*window*/) {}
int tolvex::SupportsOptions(int /*ext*/, std::uint32_t /*options*/) {
    return 1;
}

}  // namespace velinor
