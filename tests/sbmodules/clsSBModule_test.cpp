#include "sbmodules/ModuleIDPool.h"
#include "sbmodules/clsSBModule.h"

#include "LibraryFixture.h"
#include "services/Catalogues.h"

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
        for (std::size_t i = 0; i < library.Records.Count(); ++i)
            ids.push_back(std::to_string(At(i).SBModuleID) + " " + At(i).SBModuleName);
        return ids;
    }
    /// Blocks named M0, M1, ... of these IDs.
    std::string BlocksUpTo(std::int32_t end) const {
        std::string blocks;
        for (std::int32_t id = 0; id < end; ++id)
            blocks += Block(std::to_string(id) + " M" + std::to_string(id));
        return blocks;
    }

    ModuleIDPool pool;
};

TEST(clsSBModule, HoldsEachRequirementOnce) {
    clsSBModule module;
    std::vector<std::string> list{"left over"};
    module.GetTechRequirements(list);
    EXPECT_THAT(list, ElementsAre(""));
    for (const char* text : {"Lasers", "Shields", "LASERS", "Armor"})
        module.TechRequirement(text);
    module.ModuleRequirement("Dock");
    module.ModuleRequirement("dock");
    module.GetTechRequirements(list);
    EXPECT_THAT(list, ElementsAre("Lasers", "Shields", "Armor"));
    module.GetModuleRequirements(list);
    EXPECT_THAT(list, ElementsAre("Dock"));
    clsSBModule other;
    other.GetModuleRequirements(list);
    EXPECT_THAT(list, ElementsAre(""));
}

TEST(clsSBModule, TellsItsStatusAndNeverWritesItself) {
    clsSBModule module;
    EXPECT_EQ(module.Status(), "");
    module.IsDirty = true;
    EXPECT_EQ(module.Status(), "EDITED, PENDING A WRITE TO FILE");
    module.IsBeingAdded = true;
    EXPECT_EQ(module.Status(), "ADDING THIS MODULE");
    module.ToBeDeleted = true;
    EXPECT_EQ(module.Status(), "MARKED FOR DELETION");
    EXPECT_EQ(module.GenerateModuleString(), "");
}

TEST_F(SBModuleLibraryTest, KeepsABlankBeforeEachUnquotedPiece) {
    Put("a.SBModule",
        "SBMOD 7 Bastion\r\nName Bastion   Mk\tI\r\nModel Starbase01\r\nType 2\r\nENDSBMOD\r\n"
        "sbmod 8 Other\r\n  model \"Starbase01\"\r\nname\t\"Kept  blanks\" cut\r\nendsbmod\r\n");
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts, IsEmpty()) << "blanks are no fault in a module";
    EXPECT_THAT(IDs(), ElementsAre("7 Bastion", "8 Other"));
    EXPECT_EQ(At(0).DisplayName, " Bastion Mk I");
    EXPECT_EQ(At(0).Model, " Starbase01");
    EXPECT_EQ(At(0).ModuleType, 2);
    EXPECT_EQ(At(1).DisplayName, "Kept  blanks");
    EXPECT_EQ(At(1).Model, "Starbase01");
}

TEST_F(SBModuleLibraryTest, HoldsEachKeyInItsMember) {
    Put("a.SBModule",
        "// Ours\r\n\r\n" + Block("3 Dock", "\tDescription \"Text\"\r\n  ModuleSize 2.5\r\n"
                                            "  LocalAbility \"Trade\"\r\n  LocalAbilityValue -12abc\r\n"
                                            "  Type \"3.5\"\r\n  Name \"N\"\r\n  Model \"M\"\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(0).Description, "Text");
    EXPECT_EQ(At(0).ModuleSize, 2);
    EXPECT_EQ(At(0).LocalAbility, "Trade");
    EXPECT_EQ(At(0).LocalAbilityValue, -12);
    EXPECT_EQ(At(0).ModuleType, 4);
    EXPECT_EQ(At(0).DisplayName, "N");
    EXPECT_EQ(At(0).Model, "M");
    EXPECT_EQ(At(0).FileName, data + "a.SBModule");
    EXPECT_EQ(At(0).ShortName, "a.SBModule");
    EXPECT_EQ(At(0).SBModuleNumber, 1);
    EXPECT_EQ(At(0).OrigNumber, 1);
}

TEST_F(SBModuleLibraryTest, ReadsIDAndNameFromTheHeader) {
    Put("a.SBModule", Block("7.5abc Grand Bastion") + Block(" 9\t \tDock") + Block("5") + Block("Lonely") +
                          Block("3 9Lives!"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(IDs(), ElementsAre("8 Grand", "9 Dock", "5 ", "3 NineLives"));
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], "a.SBModule:8: Duplicate SBModule found!  SBModuleName = , File = a.SBModule "
                        "[duplicate-sbmodule]")
        << "an ID that is no number counts as 0, and the name is missing";
    EXPECT_THAT(texts[1], ::testing::StartsWith("a.SBModule:9: Illegal SBModule name found, the first"));
    EXPECT_THAT(texts[1], ::testing::EndsWith("name is now: NineLives. [illegal-name]"));
}

TEST_F(SBModuleLibraryTest, ReportsUnknownKeysWithTheirBlanks) {
    Put("a.SBModule", Block("1 Dock", "Colour  deep red\r\n\tModel\tX\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts,
                ElementsAre("a.SBModule:2: Unrecognized token! a(0) = Colour, sValue =  deep red, File = "
                            "a.SBModule [unrecognized-token]",
                            "a.SBModule:3: Unrecognized token! a(0) = , sValue =  Model X, File = "
                            "a.SBModule [unrecognized-token]"));
}

TEST_F(SBModuleLibraryTest, CarriesAllButRequirementsOver) {
    Put("a.SBModule", Block("1 One", "Model \"M\"\r\nModuleSize 3\r\nTech_Requirement \"T\"\r\n"
                                     "Module_Requirement \"R\"\r\n") +
                          Block("2 Two"));
    Put("b.SBModule", Block("3 Three"));
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(1).Model, "M");
    EXPECT_EQ(At(1).ModuleSize, 3);
    EXPECT_THAT(At(0).TechRequirements(), ElementsAre("T"));
    EXPECT_THAT(At(0).ModuleRequirements(), ElementsAre("R"));
    EXPECT_THAT(At(1).TechRequirements(), ElementsAre(""));
    EXPECT_THAT(At(1).ModuleRequirements(), ElementsAre(""));
    EXPECT_EQ(At(2).Model, "");
    EXPECT_EQ(At(2).ModuleSize, 0);
}

TEST_F(SBModuleLibraryTest, GathersEveryRequirementOfABlockInOrder) {
    Put("a.SBModule", Block("1 One", "Tech_Requirement \"B\"\r\nModule_Requirement Dock Two\r\n"
                                     "tech_requirement \"A\"\r\nTech_Requirement \"b\"\r\n"
                                     "Module_Requirement Dock\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(At(0).TechRequirements(), ElementsAre("B", "A"));
    EXPECT_THAT(At(0).ModuleRequirements(), ElementsAre(" Dock Two", " Dock"));
}

TEST_F(SBModuleLibraryTest, DropsAModuleWhoseIDIsTakenOrNegative) {
    Put("a.sbmodule", Block("7 Bastion"));
    Put("B.SBModule", Block("7 Dock") + Block("-1 Ghost") + Block("8 Pier"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(FileNames(), ElementsAre("a.sbmodule 0", "B.SBModule 1", "MySBModules.SBModule 2"));
    EXPECT_THAT(IDs(), ElementsAre("7 Bastion", "8 Pier"));
    EXPECT_EQ(At(1).SBModuleNumber, 2);
    EXPECT_THAT(texts, ElementsAre("B.SBModule:2: Duplicate SBModuleID found!  SBModuleName = Dock, File = "
                                   "B.SBModule [duplicate-id]",
                                   "B.SBModule:4: Duplicate SBModuleID found!  SBModuleName = Ghost, File = "
                                   "B.SBModule [duplicate-id]"));
}

TEST_F(SBModuleLibraryTest, ChecksTheIDBeforeTheName) {
    Put("a.SBModule", Block("1 Dock") + Block("1 DOCK") + "ENDSBMOD\r\n" + Block("2 dock") + Block("2 Pier"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(IDs(), ElementsAre("1 Dock"));
    const std::string duplicateID = ": Duplicate SBModuleID found!  SBModuleName = ";
    const std::string duplicateName = ": Duplicate SBModule found!  SBModuleName = ";
    EXPECT_THAT(texts,
                ElementsAre("a.SBModule:4" + duplicateID + "DOCK, File = a.SBModule [duplicate-id]",
                            "a.SBModule:4" + duplicateName + "DOCK, File = a.SBModule [duplicate-sbmodule]",
                            "a.SBModule:5" + duplicateID + "DOCK, File = a.SBModule [duplicate-id]",
                            "a.SBModule:5" + duplicateName + "DOCK, File = a.SBModule [duplicate-sbmodule]",
                            "a.SBModule:7" + duplicateName + "dock, File = a.SBModule [duplicate-sbmodule]",
                            "a.SBModule:9" + duplicateID + "Pier, File = a.SBModule [duplicate-id]"))
        << "a module dropped for its name keeps its ID";
}

TEST_F(SBModuleLibraryTest, GivesTheLowestFreeIDToOneAboveTheRange) {
    Put("a.SBModule", Block("0 Dock") + Block("140 Pier") + Block("141 Quay") + Block("1 Late"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(IDs(), ElementsAre("0 Dock", "140 Pier", "1 Quay"));
    EXPECT_THAT(texts, ElementsAre("a.SBModule:6: SBModuleID (141) above the accepted range (0-140), the ID "
                                   "will be reset to the first available ID (1). [id-out-of-range]",
                                   "a.SBModule:8: Duplicate SBModuleID found!  SBModuleName = Late, File = "
                                   "a.SBModule [duplicate-id]"));
    std::vector<std::int32_t> used;
    for (const auto& [key, id] : pool.UsedSBModuleIDs) {
        EXPECT_EQ(key, std::to_string(id));
        used.push_back(id);
    }
    EXPECT_THAT(used, ElementsAre(0, 140, 1)) << "in the order taken";
    EXPECT_EQ(pool.AvailableSBModuleIDs.Count(), 138u);
    EXPECT_EQ(pool.AvailableSBModuleIDs.ItemAt(0), 2);
}

TEST_F(SBModuleLibraryTest, StartsEveryLoadWithAllIDs) {
    EXPECT_EQ(pool.AvailableSBModuleIDs.Count(), 141u);
    EXPECT_EQ(pool.AvailableSBModuleIDs.KeyAt(0), "0");
    EXPECT_EQ(pool.AvailableSBModuleIDs.KeyAt(140), "140");
    Put("a.SBModule", Block("7 Dock"));
    ASSERT_TRUE(Load());
    pool.Fill();
    EXPECT_TRUE(pool.UsedSBModuleIDs.Empty());
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts, IsEmpty());
    EXPECT_THAT(IDs(), ElementsAre("7 Dock"));
}

TEST_F(SBModuleLibraryTest, EndsLoadingWhenNoIDIsLeft) {
    Put("a.SBModule", BlocksUpTo(141));
    Put("b.SBModule", Block("140 Dock") + "\r\n" + Block("500 Pier") + Block("3 Quay"));
    EXPECT_THAT(LoadFailing(),
                ElementsAre("9 Subscript out of range (file b.SBModule, line 4, no SBModuleID from 0 to 140 "
                            "is free) <b.SBModule>",
                            "frmSBModules_Form_Load", "frmSBModules_LoadCurrentSBModules",
                            "frmSBModules_ParseOutSBModuleFile"));
    EXPECT_EQ(library.Records.Count(), 141u);
    EXPECT_THAT(texts, ElementsAre("b.SBModule:2: Duplicate SBModuleID found!  SBModuleName = Dock, File = "
                                   "b.SBModule [duplicate-id]"));
}

TEST_F(SBModuleLibraryTest, EndsLoadingAtAnIDBeyond32Bits) {
    Put("a.SBModule", Block("2147483648 Dock"));
    EXPECT_EQ(LoadFailing().front(), "6 Overflow (file a.SBModule, line 1, key SBMOD) <a.SBModule>");
}

TEST_F(SBModuleLibraryTest, TellsOfAMissingFolder) {
    data += "Elsewhere/";
    EXPECT_FALSE(Load());
    EXPECT_THAT(texts, ElementsAre(":0: Unable to acces the Velmora Data directory! [no-data-directory]"));
}

TEST_F(SBModuleLibraryTest, BacksUpUnderTheKindsOwnMark) {
    Put("Port.sbmodule", "first");
    Load(true);
    Put("Port.sbmodule", "second");
    Load(true);
    EXPECT_EQ(Files::ReadWhole(backups + "Port.1stSBModule"), "first");
    EXPECT_EQ(Files::ReadWhole(backups + "Port.latestSBModule"), "second");
    EXPECT_EQ(Files::ListFiles(backups).size(), 2u);
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

TEST_F(SBModuleLibraryTest, SortsByNameAndBack) {
    Put("a.SBModule", Block("1 cherry") + Block("2 Apple") + Block("3 banana"));
    ASSERT_TRUE(Load());
    library.SortBy(1);
    EXPECT_THAT(Names(), ElementsAre("Apple 1", "banana 2", "cherry 3"));
    library.SortBy(0);
    EXPECT_THAT(Names(), ElementsAre("cherry 1", "Apple 2", "banana 3"));
}

TEST_F(SBModuleLibraryTest, ReadsTheSampleWithoutAWord) {
    ASSERT_TRUE(LoadSample("Data"));
    EXPECT_THAT(texts, IsEmpty());
    EXPECT_THAT(FileNames(), ElementsAre("CoreModules.SBModule 0", "FrontierModules.SBModule 1",
                                         "MySBModules.SBModule 2"));
    EXPECT_EQ(library.Records.Count(), 31u);
    EXPECT_EQ(pool.UsedSBModuleIDs.Count(), 31u);
    const auto& ring = static_cast<const clsSBModule&>(*library.Find("battlering_iii"));
    EXPECT_THAT(ring.TechRequirements(), ElementsAre("Targeting Choirs", "Grand Strategy"));
    EXPECT_THAT(ring.ModuleRequirements(), ElementsAre("BattleRing", "BattleRing_II"));
    BuildCatalogues();
    for (std::size_t i = 0; i < library.Records.Count(); ++i) {
        const clsSBModule& module = At(i);
        EXPECT_EQ(StarbaseModels.ItemAt(PositionByCode(StarbaseModels, module.Model)), module.Model);
        EXPECT_EQ(SBModuleAbilities.ItemAt(PositionByCode(SBModuleAbilities, module.LocalAbility)),
                  module.LocalAbility);
        EXPECT_EQ(SBModuleTypes.ItemAt(PositionByNumber(SBModuleTypes, module.ModuleType)),
                  module.ModuleType);
        for (const std::string& required : module.ModuleRequirements())
            EXPECT_TRUE(required.empty() || library.Find(required)) << required;
    }
    ReleaseCatalogues();
}

} // namespace
} // namespace velmora
