// The options dialog without its window: what its controls hold, and what happens when the user touches them.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "plugin/export_settings.h"
#include "plugin/options_dialog.h"
#include "plugin/setting_rules.h"

namespace velinor {

// The controls, by their numbers in the dialog's resource.
enum class ControlId : int {
    ok = 1,
    cancel = 2,
    selectionOnly = 1001,
    exportHidden = 1014,
    exportBones = 1015,
    exportAnimation = 1016,
    exportMaterials = 1017,
    exportLights = 1018,
    helperLights = 1019,
    exportCamera = 1020,
    helperLightPercent = 1021,
    exportGeometry = 1022,
    exportWebtables = 1023,
    ambientRed = 1024,
    ambientGreen = 1025,
    ambientBlue = 1026,
    browseEnvironmentMap = 1027,
    browseReflectionMap = 1028,
    environmentMap = 1029,
    fallbackQuality = 1030,
    reflectionMap = 1031,
    cleanExportFolder = 1032,
    generatePhysicalMeshes = 1033,
    polycountGoal = 1034,
    autoParams = 1035,
};

// One opening of the dialog. A window shows the state of the controls and passes on what its user does:
//
//     OptionsDialogModel model(settings, exists);
//     model.open();
//     model.click(ControlId::exportLights);  // as if the user had clicked the check box
//     model.click(ControlId::ok);            // model.result() is now DialogResult::confirmed
//
// A click on "Lights", "Helper lights", "Generate physical meshes" or "Auto-params" is stored at once, so it
// stays also when the dialog is cancelled; everything else is stored by OK. No input is rejected. Asking for
// a control of another kind (the text of a check box) gives the value of an absent one: false, or an empty
// text.
class OptionsDialogModel {
  public:
    // `settings` must outlive the model.
    OptionsDialogModel(ExportSettings& settings, PathExists exists)
        : settings_(settings), exists_(std::move(exists)) {}

    // Resets all settings but the two maps to their defaults and fills the controls.
    void open();

    // The user clicks a check box, OK or Cancel. A disabled control does not react.
    void click(ControlId control);

    // The edit now holds `text`. Typing is limited to digits by the window's number edits, pasting is not.
    void setText(ControlId edit, std::u16string_view text);

    // The user chose the file `path` after pressing the button `browse`. A cancelled choice is not passed on.
    void choose(ControlId browse, std::u16string_view path);

    bool isChecked(ControlId checkBox) const;
    bool isEnabled(ControlId control) const;
    std::u16string text(ControlId edit) const;

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
    std::string narrowText(ControlId edit) const;

    ExportSettings& settings_;
    PathExists exists_;
    std::map<ControlId, bool> checks_;
    std::map<ControlId, bool> enabled_;  // what is not listed is enabled
    std::map<ControlId, std::u16string> texts_;
    std::u16string title_;
    std::optional<DialogResult> result_;
};

}  // namespace velinor
