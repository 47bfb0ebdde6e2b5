#include "plugin/options_dialog_model.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "base/text.h"
#include "platform/code_page.h"
#include "plugin/version.h"

namespace velinor {
namespace {

struct CheckBoxField {
    ControlId control;
    bool ExportSettings::*field;
};

// Every check box, in the order in which OK reads them.
constexpr auto kCheckBoxes = std::to_array<CheckBoxField>({
    {ControlId::selectionOnly, &ExportSettings::selectionOnly},
    {ControlId::exportHidden, &ExportSettings::exportHidden},
    {ControlId::exportBones, &ExportSettings::exportBones},
    {ControlId::exportAnimation, &ExportSettings::exportAnimation},
    {ControlId::exportMaterials, &ExportSettings::exportMaterials},
    {ControlId::exportLights, &ExportSettings::exportLights},
    {ControlId::helperLights, &ExportSettings::helperLights},
    {ControlId::exportGeometry, &ExportSettings::exportGeometry},
    {ControlId::exportCamera, &ExportSettings::exportCamera},
    {ControlId::exportWebtables, &ExportSettings::exportWebtables},
    {ControlId::generatePhysicalMeshes, &ExportSettings::generatePhysicalMeshes},
    {ControlId::autoParams, &ExportSettings::autoParams},
    {ControlId::cleanExportFolder, &ExportSettings::cleanExportFolder},
});

// Drawn disabled, and never enabled.
constexpr std::array kFixedControls{ControlId::exportGeometry, ControlId::exportBones,
                                    ControlId::exportAnimation};

// Digits, letters, points and signs only: each character is one unit.
std::u16string wide(std::string_view ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

std::u16string integerText(std::int32_t value) {
    return wide(std::to_string(value));
}

// As C's "%.1f" writes it.
std::u16string oneDecimalText(float value) {
    std::array<char, 64> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, 1);
    return wide({buffer.data(), end.ptr});
}

// As C's atof reads it; the export has set the "C" locale.
double parseDouble(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

// As the C runtime's atoi reads it: what 32 bits cannot hold comes out as the nearest end of their range.
std::int32_t parseInteger(const std::string& text) {
    using Limits = std::numeric_limits<std::int32_t>;
    const long long value = std::strtoll(text.c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long long>(value, Limits::min(), Limits::max()));
}

// The path of an edit's text, which has gone through the code page of file names.
std::filesystem::path parsePath(const std::string& text) {
    return toPath(wideText(text));
}

}  // namespace

void OptionsDialogModel::open() {
    resetSettings();
    result_.reset();
    enabled_.clear();
    texts_.clear();

    for (const auto& [control, field] : kCheckBoxes)
        check(control, settings_.*field);
    check(ControlId::autoParams,
          settings_.generatePhysicalMeshes);  // not autoParams: the dialog always did so

    // The fraction is cut to a whole number before it becomes percent, so the default shows as 0. Kept:
    // scripts and habits rely on what OK then stores.
    texts_[ControlId::helperLightPercent] =
        integerText(static_cast<std::int32_t>(settings_.helperLightFraction) * 100);
    texts_[ControlId::fallbackQuality] = integerText(settings_.fallbackQuality);
    texts_[ControlId::polycountGoal] = integerText(settings_.polycountGoal);
    texts_[ControlId::ambientRed] = oneDecimalText(settings_.ambientRed);
    texts_[ControlId::ambientGreen] = oneDecimalText(settings_.ambientGreen);
    texts_[ControlId::ambientBlue] = oneDecimalText(settings_.ambientBlue);
    texts_[ControlId::environmentMap];
    texts_[ControlId::reflectionMap];

    for (const ControlId control : kFixedControls)
        enable(control, false);
    enable(ControlId::helperLights, settings_.exportLights);
    enable(ControlId::helperLightPercent, settings_.exportLights);
    title_ = u"Velinor export v " TOLVEX_VERSION_TEXT;
}

void OptionsDialogModel::click(ControlId control) {
    if (result_ || !isEnabled(control)) return;
    if (const auto box = checks_.find(control); box != checks_.end()) box->second = !box->second;
    command(control);
}

void OptionsDialogModel::command(ControlId control) {
    if (result_) return;
    switch (control) {
        case ControlId::ok:
            return confirm();
        case ControlId::cancel:
            result_ = DialogResult::cancelled;
            return;
        case ControlId::exportLights:
            return lightsClicked();
        case ControlId::helperLights:
            return helperLightsClicked();
        case ControlId::generatePhysicalMeshes:
            return physicalMeshesClicked();
        case ControlId::autoParams:
            return autoParamsClicked();
        default:
            return;  // read by OK
    }
}

void OptionsDialogModel::setChecked(ControlId checkBox, bool checked) {
    if (const auto box = checks_.find(checkBox); box != checks_.end()) box->second = checked;
}

void OptionsDialogModel::setText(ControlId edit, std::u16string_view text) {
    if (const auto entry = texts_.find(edit); entry != texts_.end()) entry->second = text;
}

void OptionsDialogModel::choose(ControlId browse, std::u16string_view path) {
    if (browse == ControlId::browseEnvironmentMap) setText(ControlId::environmentMap, path);
    if (browse == ControlId::browseReflectionMap) setText(ControlId::reflectionMap, path);
}

bool OptionsDialogModel::isChecked(ControlId checkBox) const {
    const auto box = checks_.find(checkBox);
    return box != checks_.end() && box->second;
}

bool OptionsDialogModel::isEnabled(ControlId control) const {
    const auto entry = enabled_.find(control);
    return entry == enabled_.end() || entry->second;
}

std::u16string OptionsDialogModel::text(ControlId edit) const {
    const auto entry = texts_.find(edit);
    return entry == texts_.end() ? std::u16string() : entry->second;
}

void OptionsDialogModel::resetSettings() {
    ExportSettings defaults;
    defaults.customEnvironmentMap = std::move(settings_.customEnvironmentMap);
    defaults.customReflectionMap = std::move(settings_.customReflectionMap);
    settings_ = std::move(defaults);
}

void OptionsDialogModel::lightsClicked() {
    settings_.exportLights = isChecked(ControlId::exportLights);
    followLights(settings_);
    if (!settings_.exportLights) {
        check(ControlId::helperLights, false);
        enable(ControlId::helperLightPercent, false);
    }
    enable(ControlId::helperLights, settings_.exportLights);
}

void OptionsDialogModel::helperLightsClicked() {
    settings_.helperLights = isChecked(ControlId::helperLights);
    enable(ControlId::helperLightPercent, settings_.helperLights);
}

void OptionsDialogModel::physicalMeshesClicked() {
    settings_.generatePhysicalMeshes = isChecked(ControlId::generatePhysicalMeshes);
    followPhysicalMeshes(settings_);
    if (!settings_.generatePhysicalMeshes) {
        check(ControlId::autoParams, false);
        enable(ControlId::polycountGoal, false);
    }
    enable(ControlId::fallbackQuality, settings_.generatePhysicalMeshes);
    enable(ControlId::autoParams, settings_.generatePhysicalMeshes);
}

void OptionsDialogModel::autoParamsClicked() {
    settings_.autoParams = isChecked(ControlId::autoParams);
    enable(ControlId::polycountGoal, settings_.autoParams);
}

void OptionsDialogModel::confirm() {
    readCheckBoxes();
    readEdits();
    replaceMissingMaps(settings_, exists_,
                       {toUtf8(text(ControlId::environmentMap)), toUtf8(text(ControlId::reflectionMap))},
                       report_);
    result_ = DialogResult::confirmed;
}

void OptionsDialogModel::readCheckBoxes() {
    for (const auto& [control, field] : kCheckBoxes)
        settings_.*field = isChecked(control);
}

void OptionsDialogModel::readEdits() {
    settings_.helperLightFraction =
        static_cast<float>(parseDouble(narrow(ControlId::helperLightPercent)) / 100);
    settings_.fallbackQuality = clampQuality(parseInteger(narrow(ControlId::fallbackQuality)));
    settings_.polycountGoal = parseInteger(narrow(ControlId::polycountGoal));
    settings_.ambientRed = static_cast<float>(parseDouble(narrow(ControlId::ambientRed)));
    settings_.ambientGreen = static_cast<float>(parseDouble(narrow(ControlId::ambientGreen)));
    settings_.ambientBlue = static_cast<float>(parseDouble(narrow(ControlId::ambientBlue)));
    settings_.customEnvironmentMap = parsePath(narrow(ControlId::environmentMap));
    settings_.customReflectionMap = parsePath(narrow(ControlId::reflectionMap));
}

std::string OptionsDialogModel::narrow(ControlId edit) const {
    return narrowText(text(edit));
}

}  // namespace velinor
