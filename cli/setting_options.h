// The options that stand for the controls of the options dialog: one for each field of ExportSettings that
// has one.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

#include "plugin/export_settings.h"

namespace velinor {

using SettingField = std::variant<bool ExportSettings::*, float ExportSettings::*,
                                  std::int32_t ExportSettings::*, std::filesystem::path ExportSettings::*>;

struct SettingOption {
    std::string_view name;  // without the dashes; the field's name in kebab-case
    SettingField field;
    std::string_view help;
};

// In the order of the fields.
std::span<const SettingOption> settingOptions();

}  // namespace velinor
