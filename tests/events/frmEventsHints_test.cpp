// Hints of the choice boxes, and what the review tells the error handler.
#include "editor/EditorFixture.h"
#include "events/frmEvents.h"

#include <QAbstractItemView>

namespace velmora {
namespace {

class EventHints : public WindowTest {
  protected:
    EventHints() {
        clsEvent event;
        event.EventName = "Raid";
        event.EventType = 1;
        event.GoodAttribute = 103;
        event.GoodOptStr01 = 7;
        temp.Write("Game/Data/A.event", event.GenerateEventString(false));
    }
    /// Opens a box's list and takes the entry that is chosen already.
    void PickAgain(const char* box) {
        auto* choice = Get<ChoiceBox>(box);
        choice->showPopup();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(choice->view()->window()));
        QTest::keyClick(choice->view(), Qt::Key_Return);
    }
};

TEST_F(EventHints, ComeForAnEntryThatIsChosenAgain) {
    Open<frmEvents>();
    Pick("mnuEditThisEvent");
    PickAgain("cboAttributeDropDown_0");
    EXPECT_EQ(Text("lblEditStatus"), "Affects player's Ship Speed ability");
    EXPECT_EQ(Text("lblUnit_0"), "Moves");
    PickAgain("cboDescStr_4");
    EXPECT_EQ(Text("lblEditStatus"), "Name of the planet");
    PickAgain("cboDescStr_5");
    EXPECT_EQ(Text("lblEditStatus"), "");
    EXPECT_TRUE(Enabled("mnuCommitChanges")) << "a hint is no change of the mode";
}

} // namespace
} // namespace velmora
