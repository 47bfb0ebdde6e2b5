// Off Windows a library has no resources; a table holds the texts of plugin.rc.
#include "plugin/module_max.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "base/normal_path.h"
#include "hosts/max/max_values.h"
#include "plugin/resource.h"

namespace velinor {
namespace {

constexpr std::u16string_view kTexts[] = {u"" TOLVEX_EXPORTER_NAME, u"" TOLVEX_CATEGORY,
                                          u"" TOLVEX_EXPORTER_NAME};

Dl_info ownFile() {
    Dl_info info{};
    dladdr(reinterpret_cast<const void*>(&ownFile), &info);
    return info;
}

}  // namespace

HINSTANCE moduleHandle() {
    return static_cast<HINSTANCE>(ownFile().dli_fbase);
}

const MCHAR* stringResource(StringResource id) {
    static std::array<char16_t, 256> buffer{};
    const auto place = static_cast<std::size_t>(id) - 1;
    if (place >= std::size(kTexts)) return nullptr;
    buffer.fill(u'\0');
    std::ranges::copy(kTexts[place], buffer.begin());
    return maxText(buffer.data());
}

std::filesystem::path modulePath() {
    const char* name = ownFile().dli_fname;
    return name == nullptr ? std::filesystem::path() : absolutePath(name);
}

}  // namespace velinor
