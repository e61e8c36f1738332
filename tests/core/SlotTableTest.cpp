#include "core/SlotTable.h"

#include <gtest/gtest.h>

#include <set>

namespace vextrel {
namespace {

TEST(SlotTable, ShufflingSortsTheDrawnNumbersAsText) {
    const struct {
        const char* what;
        double drawOfLast;
        double drawOfOthers;
        bool lastComesFirst;
    } rows[] = {
        {"1000 before 2", 0.999, 0.001, true},
        {"1001 after 1", 0.9999, 0.0, false},
        {"188.5 is 188, before 189", 0.1875, 0.18775, true},
        {"63.5 is 64, after 63", 0.0625, 0.062, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        KeySlotTable table;
        int draws = 0;
        table.Rebuild(true, [&] { return ++draws == characterKeyCount ? row.drawOfLast : row.drawOfOthers; });
        EXPECT_EQ(draws, characterKeyCount);
        EXPECT_EQ(table.ButtonOfSlot(row.lastComesFirst ? 0 : 46), StandardButtonOfSlot(46));

        std::set<int> buttons;
        for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
            buttons.insert(table.ButtonOfSlot(slot));
        }
        EXPECT_EQ(buttons.size(), 47U) << "equal keys lose no button";

        table.Rebuild(false, {});
        for (std::size_t slot = 0; slot < characterKeyCount; ++slot) {
            EXPECT_EQ(table.ButtonOfSlot(slot), StandardButtonOfSlot(slot));
        }
    }
}

TEST(SlotTable, ScrambledInputEntersWhatTheKeyAtTheTypedPositionShows) {
    const auto captionOfButton = [](int button) {
        return button == 17 ? std::wstring(L"&&") : L"<" + std::to_wstring(button) + L">";
    };
    int entered = 0;
    for (unsigned code = 0; code <= 0x2FF; ++code) {
        const auto typed = static_cast<wchar_t>(code);
        const std::wstring text = ScrambledInput(typed, captionOfButton);
        entered += text.empty() ? 0 : 1;
        EXPECT_EQ(text, ScrambledInput(ShiftCounterpart(typed), captionOfButton)) << code;
    }
    EXPECT_EQ(entered, 2 * characterKeyCount + 1);

    const std::pair<wchar_t, const wchar_t*> rows[] = {{L'q', L"&"},    {L'`', L"<1>"},  {L'|', L"<65>"},
                                                       {L'?', L"<52>"}, {L':', L"<40>"}, {L' ', L" "},
                                                       {L'\x08', L""},  {L'\xE4', L""}};
    for (const auto& [typed, text] : rows) {
        EXPECT_EQ(ScrambledInput(typed, captionOfButton), text);
    }
}

} // namespace
} // namespace vextrel
