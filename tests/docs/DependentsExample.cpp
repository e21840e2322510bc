#include "docs/Marker.h"
#include "foundation/messages/FIdleTimer.h"
#include "foundation/messages/UpdateHandler.h"
#include "foundation/object/FRefPtr.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [dependents]
class MarkerView : public CmClass<MarkerView, CmObject> {
public:
    static FMetaClass metaClass;

    explicit MarkerView(Marker& marker) : marker_(&marker) { marker.addDependent(this); }
    // Nobody has a reference of a dependent: who enters itself takes itself out.
    ~MarkerView() override { marker_->removeDependent(this); }

    void updateFrom(CmObject* changed, std::int32_t) override {
        if (const auto* marker = cmCast<Marker>(changed)) {
            shown = marker->getSeconds();
            ++updates;
        }
    }

    double shown = 0;
    int updates = 0;

private:
    FRefPtr<Marker> marker_;
};

FMetaClass MarkerView::metaClass("MarkerView", &CmObject::metaClass, nullptr);
// [dependents]

TEST(DependentsExample, AChangeIsToldWithTheIdleTaskAndOnlyOnce) {
    ASSERT_NE(UpdateHandler::getInstance(true), nullptr);
    Marker marker("Verse", 12);
    MarkerView view(marker);
    marker.setSeconds(13);
    marker.setSeconds(14);
    EXPECT_EQ(view.updates, 0);
    FIdleTimer::runIdleTask();
    EXPECT_EQ(view.updates, 1);
    EXPECT_EQ(view.shown, 14);
}

TEST(DependentsExample, AViewThatIsGoneIsNotTold) {
    ASSERT_NE(UpdateHandler::getInstance(true), nullptr);
    Marker marker("Verse", 12);
    { const MarkerView view(marker); }
    EXPECT_EQ(UpdateHandler::getInstance(true)->countDependents(&marker), 0);
    marker.changed(0);
}

} // namespace
} // namespace tessera::test
