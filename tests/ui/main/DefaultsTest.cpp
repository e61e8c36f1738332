// The user's ways with everything at its default: the program answers no other program, so that what has arrived is seen
// only where the password is dropped.
#include "core/ids.h"
#include "driver/App.h"
#include "driver/Target.h"

#include <gtest/gtest.h>

namespace vextrel::driver {
namespace {

class ByDefault : public testing::Test {
  protected:
    ByDefault()
        : sandbox_(Sandbox::Others::Refused) {
        sandbox_.SetSetting(L"Keep Password after Drag Drop", L"True");
        app_.emplace(sandbox_);
        field_.KeepClearOf(BoundsOf(app_->Main()));
        app_->Activate();
    }

    void ClickKey(const wchar_t* caption) { pointer_.Click(app_->FindKey(caption)); }

    /// What a drag brings.
    std::wstring Password() {
        const int drops = field_.Drops();
        app_->Activate();
        field_.PullHere(pointer_, CentreOf(app_->PasswordBox()));
        pointer_.Release();
        Await("the drop arrives", [&] { return field_.Drops() > drops; });
        return field_.Text();
    }

    const Target field_{L"--topmost"};
    Sandbox sandbox_;
    std::optional<App> app_;
    Pointer pointer_;
};

TEST_F(ByDefault, TypedCharactersOfEveryKindArrive) {
    Keys::Stroke('A');
    EXPECT_EQ(Password(), L"a");
    Keys::Stroke('B', {VK_SHIFT});
    EXPECT_EQ(Password(), L"aB");
    Keys::Type(L"c\u20AC");
    EXPECT_EQ(Password(), L"aBc\u20AC");
    Keys::Stroke(VK_BACK);
    EXPECT_EQ(Password(), L"aBc");
}

} // namespace
} // namespace vextrel::driver
