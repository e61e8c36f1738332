#include "core/DragGesture.h"

#include <gtest/gtest.h>

namespace vextrel {
namespace {

using Verdict = DragGesture::Verdict;

constexpr Size box{200, 20};
constexpr Size threshold{4, 4};

TEST(DragGesture, APressOnTheSelectionDragsPastTheThreshold) {
    DragGesture gesture;
    EXPECT_EQ(gesture.Press({50, 10}, true, box, threshold), Verdict::Hold);
    EXPECT_EQ(gesture.Move({54, 6}), Verdict::Hold) << "exactly at the threshold";
    EXPECT_EQ(gesture.Move({55, 10}), Verdict::StartDrag);
    EXPECT_EQ(gesture.Move({80, 10}), Verdict::Box) << "a drag starts once";
    EXPECT_EQ(gesture.Release(), Verdict::Box);
}

TEST(DragGesture, AClickOnTheSelectionReachesTheBoxAfterAll) {
    DragGesture gesture;
    static_cast<void>(gesture.Press({50, 10}, true, box, threshold));
    EXPECT_EQ(gesture.Release(), Verdict::Click);
    EXPECT_EQ(gesture.Release(), Verdict::Box);
}

TEST(DragGesture, APressElsewhereSelectsUntilThePointerIsFarOut) {
    const struct {
        Point point;
        Verdict verdict;
    } rows[] = {
        {{199, 19}, Verdict::Box},       {{100, 39}, Verdict::Box},        {{100, 40}, Verdict::StartDrag},
        {{100, -20}, Verdict::Box},      {{100, -21}, Verdict::StartDrag}, {{-20, 10}, Verdict::Box},
        {{-21, 10}, Verdict::StartDrag}, {{219, 10}, Verdict::Box},        {{220, 10}, Verdict::StartDrag},
    };
    for (const auto& row : rows) {
        DragGesture gesture;
        EXPECT_EQ(gesture.Press({100, 10}, false, box, threshold), Verdict::Box);
        EXPECT_EQ(gesture.Move(row.point), row.verdict) << row.point.x << ',' << row.point.y;
    }
}

TEST(DragGesture, NothingStartsWithoutAPressOrAfterACancel) {
    DragGesture gesture;
    EXPECT_EQ(gesture.Move({500, 500}), Verdict::Box);
    static_cast<void>(gesture.Press({100, 10}, false, box, threshold));
    gesture.Cancel();
    EXPECT_EQ(gesture.Move({500, 500}), Verdict::Box);
}

} // namespace
} // namespace vextrel
