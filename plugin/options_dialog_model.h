// The options dialog without its window: what its controls hold, and what happens when the user touches them.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "plugin/export_settings.h"
#include "plugin/options_dialog.h"
#include "plugin/resource.h"
#include "plugin/setting_rules.h"

namespace velinor {

// The controls, by their numbers in the dialog's resource. OK and Cancel have those of every dialog.
enum class ControlId : int {
    ok = 1,
    cancel = 2,
    selectionOnly = IDC_SELECTION_ONLY,
    exportHidden = IDC_EXPORT_HIDDEN,
    exportBones = IDC_EXPORT_BONES,
    exportAnimation = IDC_EXPORT_ANIMATION,
    exportMaterials = IDC_EXPORT_MATERIALS,
    exportLights = IDC_EXPORT_LIGHTS,
    helperLights = IDC_HELPER_LIGHTS,
    exportCamera = IDC_EXPORT_CAMERA,
    helperLightPercent = IDC_HELPER_LIGHT_PERCENT,
    exportGeometry = IDC_EXPORT_GEOMETRY,
    exportWebtables = IDC_EXPORT_WEBTABLES,
    ambientRed = IDC_AMBIENT_RED,
    ambientGreen = IDC_AMBIENT_GREEN,
    ambientBlue = IDC_AMBIENT_BLUE,
    browseEnvironmentMap = IDC_BROWSE_ENVIRONMENT_MAP,
    browseReflectionMap = IDC_BROWSE_REFLECTION_MAP,
    environmentMap = IDC_ENVIRONMENT_MAP,
    fallbackQuality = IDC_FALLBACK_QUALITY,
    reflectionMap = IDC_REFLECTION_MAP,
    cleanExportFolder = IDC_CLEAN_EXPORT_FOLDER,
    generatePhysicalMeshes = IDC_GENERATE_PHYSICAL_MESHES,
    polycountGoal = IDC_POLYCOUNT_GOAL,
    autoParams = IDC_AUTO_PARAMS,
};

// One opening of the dialog. A window shows the state of the controls and passes on what its user does:
//
//     OptionsDialogModel model(settings, exists, report);
//     model.open();
//     model.click(ControlId::exportLights);  // as if the user had clicked the check box
//     model.click(ControlId::ok);            // model.result() is now DialogResult::confirmed
//
// A window whose check boxes change by themselves reports their states instead of clicks:
//
//     model.setChecked(ControlId::exportLights, false);
//     model.command(ControlId::exportLights);
//
// A click on "Lights", "Helper lights", "Generate physical meshes" or "Auto-params" is stored at once, so it
// stays also when the dialog is cancelled; everything else is stored by OK. No input is rejected. Asking for
// a control of another kind (the text of a check box) gives the value of an absent one: false, or an empty
// text.
class OptionsDialogModel {
  public:
    // `settings` and `report` must outlive the model. The report gets what OK replaces.
    OptionsDialogModel(ExportSettings& settings, PathExists exists, Report& report)
        : settings_(settings), exists_(std::move(exists)), report_(report) {}

    // Resets all settings but the two maps to their defaults and fills the controls.
    void open();

    // The user clicks a check box, OK or Cancel. A disabled control does not react.
    void click(ControlId control);

    // What a click does besides changing the check box. A closed dialog does not react.
    void command(ControlId control);

    // The check box now shows `checked`; nothing else follows from that.
    void setChecked(ControlId checkBox, bool checked);

    // The edit now holds `text`. Typing is limited to digits by the window's number edits, pasting is not.
    void setText(ControlId edit, std::u16string_view text);

    // The user chose the file `path` after pressing the button `browse`. A cancelled choice is not passed on.
    void choose(ControlId browse, std::u16string_view path);

    bool isChecked(ControlId checkBox) const;
    bool isEnabled(ControlId control) const;
    std::u16string text(ControlId edit) const;

    // What a window has to show, from opening on: all check boxes, all edits, and the controls that are not
    // simply enabled all the time.
    const std::map<ControlId, bool>& checkBoxes() const { return checks_; }
    const std::map<ControlId, std::u16string>& edits() const { return texts_; }
    const std::map<ControlId, bool>& enabledStates() const { return enabled_; }

    // The window's title, from opening on.
    std::u16string_view title() const { return title_; }

    // How the dialog ended; nothing while it is open.
    std::optional<DialogResult> result() const { return result_; }

  private:
    void check(ControlId checkBox, bool checked) { checks_[checkBox] = checked; }
    void enable(ControlId control, bool enabled) { enabled_[control] = enabled; }
    void resetSettings();
    void lightsClicked();
    void helperLightsClicked();
    void physicalMeshesClicked();
    void autoParamsClicked();
    void confirm();
    void readCheckBoxes();
    void readEdits();
    std::string narrow(ControlId edit) const;

    ExportSettings& settings_;
    PathExists exists_;
    Report& report_;
    std::map<ControlId, bool> checks_;
    std::map<ControlId, bool> enabled_;  // what is not listed is enabled
    std::map<ControlId, std::u16string> texts_;
    std::u16string title_;
    std::optional<DialogResult> result_;
};

}  // namespace velinor
