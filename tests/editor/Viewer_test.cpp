// The starbase module viewer's window.
#include "editor/EditorFixture.h"
#include "sbmodules/frmSBModules.h"

namespace velmora {
namespace {

using Viewer = WindowTest;

TEST_F(Viewer, ShowsTheSettingsOrderInMarksThatPickingLeavesAlone) {
    Settings.SortBy = "1";
    Open<frmSBModules>();
    for (const char* item : {"mnuSortByFileName", "mnuSortAlphabetically", "mnuSortAlphabetically"}) {
        Pick(item);
        EXPECT_FALSE(Get<QAction>("mnuSortByFileName")->isChecked()) << item;
        EXPECT_TRUE(Get<QAction>("mnuSortAlphabetically")->isChecked()) << item;
    }
}

TEST_F(Viewer, IsEmptyWithoutModules) {
    Open<frmSBModules>();
    for (const char* field :
         {"cboSBModuleID", "cboSBModuleFile", "cboModuleType", "cboModel", "cboModuleSize", "cboLocalAbility",
          "cboModuleRequirements", "cboTechRequirements", "txtSBModuleName", "txtDisplayName",
          "txtLocalAbilityValue", "txtDescription"})
        EXPECT_EQ(Text(field), "") << field;
    EXPECT_EQ(Get<ChoiceBox>("cboSBModuleID")->count(), 141);
    EXPECT_EQ(Get<ChoiceBox>("cboSBModuleFile")->count(), 1);
    EXPECT_EQ(Text("txtEdited"), "NO");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    EXPECT_FALSE(Enabled("cmdBack"));
    EXPECT_FALSE(Enabled("cmdForward"));
}

} // namespace
} // namespace velmora
