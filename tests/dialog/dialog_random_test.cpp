// The window against the model: the same clicks must leave the same states and settings.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "tests/dialog/dialog_driver.h"

namespace velinor {
namespace {

bool existsByLength(const std::filesystem::path& path) {
    return path.native().size() % 2 == 0;
}

std::wstring wide(std::u16string_view text) {
    return {text.begin(), text.end()};
}

class DialogAgainstModel : public testing::TestWithParam<int> {
  protected:
    static constexpr int kSteps = 120;

    std::size_t pick(std::size_t count) { return random() % count; }

    // One thing that a user does, to both.
    std::string act(const DrivenDialog& dialog, OptionsDialogModel& model) {
        if (pick(4) == 0) {
            const auto& edits = model.edits();
            const ControlId edit = std::next(edits.begin(), static_cast<int>(pick(edits.size())))->first;
            const std::u16string text(kTexts[pick(kTexts.size())]);
            dialog.setText(edit, wide(text));
            model.setText(edit, text);
            return "text of " + std::to_string(static_cast<int>(edit));
        }
        const auto& boxes = model.checkBoxes();
        const ControlId box = std::next(boxes.begin(), static_cast<int>(pick(boxes.size())))->first;
        dialog.click(box);
        model.click(box);
        return "click on " + std::to_string(static_cast<int>(box));
    }

    static void expectEqualStates(const DrivenDialog& dialog, const OptionsDialogModel& model) {
        for (const auto& [box, isChecked] : model.checkBoxes())
            EXPECT_EQ(dialog.isChecked(box), isChecked) << static_cast<int>(box);
        for (const auto& [edit, text] : model.edits())
            EXPECT_EQ(dialog.text(edit), wide(text)) << static_cast<int>(edit);
        for (int id = 1014; id <= 1035; ++id) {
            const auto control = static_cast<ControlId>(id);
            EXPECT_EQ(dialog.isEnabled(control), model.isEnabled(control)) << id;
        }
    }

    static constexpr std::array<std::u16string_view, 8> kTexts{
        u"", u"0", u"7", u"-3", u"0.25", u"1e2x", u"sky.dds", u"C:\\maps\\r\u00e9flexion.dds"};
    std::mt19937 random{static_cast<unsigned>(GetParam())};
};

TEST_P(DialogAgainstModel, TheSameClicksLeaveTheSame) {
    ExportSettings shown;
    ExportSettings expected;
    OpeningOptions options;
    options.exists = existsByLength;
    DrivenDialog dialog(shown, options);
    Report told;
    OptionsDialogModel model(expected, existsByLength, told);
    model.open();
    for (int step = 0; step < kSteps; ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + ": " + act(dialog, model));
        expectEqualStates(dialog, model);
        if (HasFailure()) return;
    }
    const ControlId end = GetParam() % 3 == 0 ? ControlId::cancel : ControlId::ok;
    dialog.click(end);
    model.click(end);
    EXPECT_EQ(dialog.finish(), model.result());
    EXPECT_EQ(shown, expected);
    EXPECT_EQ(dialog.report().entries(), told.entries());
}

INSTANTIATE_TEST_SUITE_P(Seeds, DialogAgainstModel, testing::Range(1, 13));

}  // namespace
}  // namespace velinor
