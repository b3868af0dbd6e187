#include "sbmodules/ModuleIDPool.h"
#include "sbmodules/clsSBModule.h"

#include "LibraryFixture.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SBModuleLibraryTest : public LibraryFixture {
  protected:
    SBModuleLibraryTest() : LibraryFixture(SBModuleKind, "MySBModules.SBModule") {
        library.Admit = [this](Record& record, const Library::Report& report) {
            return pool.Admit(record, report);
        };
    }

    const clsSBModule& At(std::size_t at) const { return As<clsSBModule>(at); }
    /// Each loaded module's ID and name.
    std::vector<std::string> IDs() const {
        std::vector<std::string> ids;
        for (std::size_t i = 0; i < library.Count(); ++i)
            ids.push_back(std::to_string(At(i).SBModuleID) + " " + At(i).SBModuleName);
        return ids;
    }
    static std::string Dropped(const std::string& where, const std::string& name, const std::string& rule) {
        return where + ": Duplicate SBModule" + (rule == "duplicate-id" ? "ID" : "") +
               " found!  SBModuleName = " + name + ", File = " + where.substr(0, where.find(':')) + " [" +
               rule + "]";
    }

    ModuleIDPool pool;
};

TEST(clsSBModule, GivesItsRequirementsInPlaceOfWhatAListHolds) {
    clsSBModule module;
    std::vector<std::string> list{"left over"};
    module.GetTechRequirements(list);
    EXPECT_THAT(list, ElementsAre(""));
    module.ModuleRequirement("Dock");
    module.GetModuleRequirements(list);
    EXPECT_THAT(list, ElementsAre("Dock"));
}

TEST(clsSBModule, TellsItsStatusAndNeverWritesItself) {
    clsSBModule module;
    module.IsDirty = module.IsBeingAdded = true;
    EXPECT_EQ(module.Status(), "ADDING THIS MODULE");
    EXPECT_EQ(module.GenerateModuleString(), "");
}

TEST_F(SBModuleLibraryTest, KeepsABlankBeforeEachUnquotedPiece) {
    Put("a.SBModule",
        "SBMOD 7 Bastion\r\nName Bastion   Mk\tI\r\nModel Starbase01\r\nType 2\r\nENDSBMOD\r\n"
        "sbmod 8 Other\r\n  model \"Starbase01\"\r\nname\t\"Kept  blanks\" cut\r\nendsbmod\r\n" +
            Block("9 Odd", "Colour  deep red\r\n\tModel\tX\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts, ElementsAre("a.SBModule:11: Unrecognized token! a(0) = Colour, sValue =  deep red, "
                                   "File = a.SBModule [unrecognized-token]",
                                   "a.SBModule:12: Unrecognized token! a(0) = , sValue =  Model X, File = "
                                   "a.SBModule [unrecognized-token]"))
        << "blanks alone are no fault in a module";
    EXPECT_THAT(IDs(), ElementsAre("7 Bastion", "8 Other", "9 Odd"));
    EXPECT_EQ(At(0).DisplayName, " Bastion Mk I");
    EXPECT_EQ(At(0).Model, " Starbase01");
    EXPECT_EQ(At(0).ModuleType, 2);
    EXPECT_EQ(At(1).DisplayName, "Kept  blanks");
    EXPECT_EQ(At(1).Model, "Starbase01");
}

TEST_F(SBModuleLibraryTest, ReadsIDAndNameFromTheHeader) {
    Put("a.SBModule", Block("7.5abc Grand Bastion") + Block(" 9\t \tDock") + Block("5") + Block("Lonely") +
                          Block("3 9Lives!"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(IDs(), ElementsAre("8 Grand", "9 Dock", "5 ", "3 NineLives"));
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], Dropped("a.SBModule:8", "", "duplicate-sbmodule"))
        << "an ID that is no number counts as 0, and the name is missing";
    EXPECT_THAT(texts[1], ::testing::StartsWith("a.SBModule:9: Illegal SBModule name found, the first"));
    EXPECT_THAT(texts[1], ::testing::EndsWith("name is now: NineLives. [illegal-name]"));
}

TEST_F(SBModuleLibraryTest, GathersRequirementsAndCarriesAllElseOver) {
    Put("a.SBModule",
        Block("1 One", "Model \"M\"\r\nModuleSize 3\r\nTech_Requirement \"B\"\r\n"
                       "Module_Requirement Dock Two\r\ntech_requirement \"A\"\r\nTech_Requirement \"b\"\r\n"
                       "Module_Requirement Dock\r\n") +
            Block("2 Two"));
    Put("b.SBModule", Block("3 Three"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(At(0).TechRequirements(), ElementsAre("B", "A"));
    EXPECT_THAT(At(0).ModuleRequirements(), ElementsAre(" Dock Two", " Dock"));
    EXPECT_EQ(At(1).Model, "M");
    EXPECT_EQ(At(1).ModuleSize, 3);
    EXPECT_THAT(At(1).TechRequirements(), ElementsAre(""));
    EXPECT_THAT(At(1).ModuleRequirements(), ElementsAre(""));
    EXPECT_EQ(At(2).Model, "");
    EXPECT_EQ(At(2).ModuleSize, 0);
}

TEST_F(SBModuleLibraryTest, DropsAModuleForItsIDOrItsName) {
    Put("a.sbmodule", Block("1 Dock") + Block("1 DOCK") + "ENDSBMOD\r\n" + Block("2 dock") + Block("2 Pier"));
    Put("B.SBModule", Block("-1 Ghost") + Block("8 Quay"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(FileNames(), ElementsAre("a.sbmodule 0", "B.SBModule 1", "MySBModules.SBModule 2"));
    EXPECT_THAT(IDs(), ElementsAre("1 Dock", "8 Quay"));
    EXPECT_EQ(At(1).SBModuleNumber, 2);
    EXPECT_THAT(texts, ElementsAre(Dropped("a.sbmodule:4", "DOCK", "duplicate-id"),
                                   Dropped("a.sbmodule:4", "DOCK", "duplicate-sbmodule"),
                                   Dropped("a.sbmodule:5", "DOCK", "duplicate-id"),
                                   Dropped("a.sbmodule:5", "DOCK", "duplicate-sbmodule"),
                                   Dropped("a.sbmodule:7", "dock", "duplicate-sbmodule"),
                                   Dropped("a.sbmodule:9", "Pier", "duplicate-id"),
                                   Dropped("B.SBModule:2", "Ghost", "duplicate-id")))
        << "the ID is checked before the name; a module dropped for its name keeps its ID";
}

TEST_F(SBModuleLibraryTest, GivesTheLowestFreeIDToOneAboveTheRange) {
    Put("a.SBModule", Block("0 Dock") + Block("140 Pier") + Block("141 Quay") + Block("1 Late"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(IDs(), ElementsAre("0 Dock", "140 Pier", "1 Quay"));
    EXPECT_THAT(texts, ElementsAre("a.SBModule:6: SBModuleID (141) above the accepted range (0-140), the ID "
                                   "will be reset to the first available ID (1). [id-out-of-range]",
                                   Dropped("a.SBModule:8", "Late", "duplicate-id")));
    std::vector<std::string> used;
    for (const auto& [key, id] : pool.UsedSBModuleIDs)
        used.push_back(key + " " + std::to_string(id));
    EXPECT_THAT(used, ElementsAre("0 0", "140 140", "1 1")) << "in the order taken";
    EXPECT_EQ(pool.AvailableSBModuleIDs.Count(), 138u);
    EXPECT_EQ(pool.AvailableSBModuleIDs.ItemAt(0), 2);
    pool.Fill();
    EXPECT_TRUE(pool.UsedSBModuleIDs.Empty());
    EXPECT_EQ(pool.AvailableSBModuleIDs.Count(), 141u);
    EXPECT_EQ(pool.AvailableSBModuleIDs.KeyAt(140), "140");
    ASSERT_TRUE(Load());
    EXPECT_THAT(IDs(), ElementsAre("0 Dock", "140 Pier", "1 Quay")) << "each load starts with all IDs";
}

TEST_F(SBModuleLibraryTest, EndsLoadingWhenNoIDIsLeft) {
    std::string blocks;
    for (int id = 0; id <= 140; ++id)
        blocks += Block(std::to_string(id) + " M" + std::to_string(id));
    Put("a.SBModule", blocks);
    Put("b.SBModule", Block("140 Dock") + "\r\n" + Block("500 Pier") + Block("3 Quay"));
    EXPECT_THAT(LoadFailing(),
                ElementsAre("9 Subscript out of range (file b.SBModule, line 4, no SBModuleID from 0 to 140 "
                            "is free) <b.SBModule>",
                            "frmSBModules_Form_Load", "frmSBModules_LoadCurrentSBModules",
                            "frmSBModules_ParseOutSBModuleFile"));
    EXPECT_EQ(library.Count(), 141u);
    EXPECT_THAT(texts, ElementsAre(Dropped("b.SBModule:2", "Dock", "duplicate-id")));
    Put("a.SBModule", Block("2147483648 Dock"));
    EXPECT_EQ(LoadFailing().front(), "6 Overflow (file a.SBModule, line 1, key SBMOD) <a.SBModule>");
}

TEST_F(SBModuleLibraryTest, ReadsEveryByteOfAQuotedText) {
    std::string lines;
    for (const Field& field : SBModuleKind.Fields)
        if (field.Type == FieldType::Text || field.Type == FieldType::List)
            lines += "  " + std::string(field.Key) + " \"" + AllBytes() + "\"\r\n";
    Put("a.SBModule", Block("1 Dock", lines));
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts, IsEmpty());
    EXPECT_THAT(
        (std::vector<std::string>{At(0).DisplayName, At(0).Model, At(0).Description, At(0).LocalAbility,
                                  At(0).TechRequirements().at(0), At(0).ModuleRequirements().at(0)}),
        ::testing::Each(AllBytes()));
}

} // namespace
} // namespace velmora
