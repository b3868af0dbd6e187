// The sample game's event files hold the planted faults and no others.
#include "LibraryFixture.h"
#include "events/EventRules.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;

class SampleEventsTest : public LibraryFixture {
  protected:
    SampleEventsTest() : LibraryFixture(EventKind, "MyEvents.event") {}
};

TEST_F(SampleEventsTest, TellOfThePlantedFaultsOnly) {
    ASSERT_TRUE(LoadSample("Data"));
    EXPECT_EQ(library.Records.Count(), 74u);
    EXPECT_EQ(library.Files.Count(), 7u);
    std::vector<std::string> seen;
    for (const std::string& text : texts)
        seen.push_back(text.substr(0, text.find(": ")) + " " + text.substr(text.rfind('[')));
    EXPECT_THAT(seen,
                ElementsAre("Glitches.event:26 [unneeded-space]", "Glitches.event:51 [unrecognized-token]",
                            "Glitches.event:91 [illegal-name]", "Glitches.event:135 [illegal-name]",
                            "Glitches.event:179 [unneeded-space]", "Glitches.event:228 [unneeded-space]",
                            "Glitches.event:228 [unrecognized-token]", "Glitches.event:307 [duplicate-event]",
                            "Glitches.event:351 [duplicate-event]"));
}

TEST_F(SampleEventsTest, AreRewrittenAsTheyAre) {
    ASSERT_TRUE(LoadSample("Data"));
    for (const std::string file : {"Bureaucracy.event", "CoreEvents.event", "FrontierLife.event"}) {
        std::string written;
        for (const std::string& name : library.NamesInFile(file))
            AppendBlock(EventKind, *library.Find(name), written);
        EXPECT_EQ(written, Get(file));
    }
}

TEST_F(SampleEventsTest, AreFitForTheGameButForThePlantedFaults) {
    ASSERT_TRUE(LoadSample("Data"));
    Catalogue subs;
    BuildWildCardSubs(subs);
    const std::string game = Files::PathText(std::filesystem::path(VELMORA_SAMPLE)) + Files::Separator;
    std::vector<std::string> seen;
    for (const auto& [name, record] : library.Records) {
        auto& event = static_cast<clsEvent&>(*record);
        NormalizeEvent(event);
        for (const Reason& reason : CheckEvent(event, game + event.Image, subs))
            seen.push_back(event.ShortName + " " + name + " " + reason.Rule);
    }
    EXPECT_THAT(
        seen,
        ElementsAre(
            "Glitches.event CarriedAway wild-cards-missing", "Glitches.event CarriedAway wild-card-count",
            "Glitches.event NoSuchPicture no-image", "Glitches.event UnfilledBlank wild-card-placement",
            "Glitches.event UnfilledBlank wild-card-count", "Glitches.event WrongBox wild-card-placement",
            "Glitches.event TooManyCooks too-many-wild-cards",
            "Glitches.event TooManyCooks too-many-wild-cards", "Glitches.event SpareBoxes wild-cards-missing",
            "Glitches.event SpareBoxes wild-card-count", "Glitches.event NamelessDread no-title",
            "Glitches.event NothingToSay no-description", "Glitches.event NothingToSay no-good-option",
            "Glitches.event NothingToSay no-neutral-option", "Glitches.event NothingToSay no-evil-option"));
}

} // namespace
} // namespace velmora
