#include "events/EventRules.h"
#include "events/clsEvent.h"

#include "TempFolder.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A sound event in a game directory of its own.
class EventRulesTest : public ::testing::Test {
  protected:
    EventRulesTest() {
        BuildWildCardSubs(subs);
        game.Write("GFX/Raid.pcx", "picture");
        event.Title = "Raid";
        event.Image = "Gfx\\\\Raid.pcx";
        event.Description = "%s raids %s!";
        event.DescStr01 = 1;
        event.DescStr02 = 7;
        event.GoodOption = "Talk";
        event.NeutralOption = "Wait";
        event.EvilOption = "Raid back";
    }

    std::vector<std::string> Rules() {
        std::vector<std::string> rules;
        for (const Reason& reason : CheckEvent(event, game.Path() + event.Image, subs))
            rules.push_back(reason.Rule);
        return rules;
    }

    TempFolder game;
    Catalogue subs;
    clsEvent event;
};

TEST(clsEvent, RemembersItsStatus) {
    clsEvent event;
    event.IsDirty = event.IsBeingAdded = event.ToBeDeleted = true;
    EXPECT_EQ(event.Status(), "MARKED FOR DELETION");
    event.IsDirty = event.IsBeingAdded = event.ToBeDeleted = false;
    EXPECT_EQ(event.Status(), "MARKED FOR DELETION");
}

TEST_F(EventRulesTest, ListsEveryReasonInOrder) {
    EXPECT_THAT(Rules(), IsEmpty());
    event.Title = " ";
    EXPECT_THAT(Rules(), IsEmpty()) << "a blank is a title";
    event.Title.clear();
    event.Image = "Gfx\\\\Missing.pcx";
    event.Description.clear();
    event.GoodOption.clear();
    event.NeutralOption.clear();
    event.EvilOption.clear();
    EXPECT_THAT(Rules(),
                ElementsAre("no-title", "no-image", "no-description", "no-good-option", "no-neutral-option",
                            "no-evil-option", "wild-cards-missing", "wild-card-count"));
    event.Image.clear();
    EXPECT_THAT(Rules(), ::testing::Contains("no-image")) << "the game directory is no picture";
}

TEST_F(EventRulesTest, CountsWildCardsAgainstTheirOwnBoxes) {
    event.Description = "%s %S %s %s %s";
    event.DescStr03 = event.DescStr04 = 11;
    EXPECT_THAT(Rules(), ElementsAre("too-many-wild-cards"));
    event.EvilOption = "%s";
    event.NeutralOptStr01 = 9;
    EXPECT_THAT(Rules(), ElementsAre("too-many-wild-cards", "wild-cards-missing", "wild-card-count",
                                     "wild-card-placement", "wild-card-count"));
    event.EvilOptStr01 = 3;
    EXPECT_THAT(Rules(), ::testing::Contains("wild-card-placement"))
        << "a number of no substitution is nothing";
}

TEST(EventRules, NormalizesWhatShowingNormalizes) {
    clsEvent event;
    event.Description = "100% of %S";
    event.EvilOption = "5%%";
    event.MoralityWeight = 9;
    NormalizeEvent(event);
    EXPECT_EQ(event.Description, "100%% of %s");
    EXPECT_EQ(event.EvilOption, "5%%");
    EXPECT_EQ(event.MoralityWeight, 5);
    EXPECT_EQ(LegalMoralityWeight(-2), 1);
}

TEST(EventRules, DoublesAPicturesBackslashesOnce) {
    const std::string game = "C:\\Games\\Velmora\\";
    const std::pair<std::string, std::string> cases[] = {
        {"c:\\games\\velmora\\GFX\\Raid.pcx", "GFX\\\\Raid.pcx"},
        {"C:/Games/Velmora/GFX/Raid.pcx", "GFX\\\\Raid.pcx"},
        {"C:\\Games\\Velmora\\Gfx\\\\Raid.pcx", "Gfx\\\\Raid.pcx"},
        {"C:\\Games\\Velmora\\Art\\\\Raid.pcx", "Art\\\\Raid.pcx"},
        {"C:\\Games\\Velmora\\Raid.pcx", "Raid.pcx"},
        {"D:\\Raid.pcx", "D:\\\\Raid.pcx"},
        {"C:\\Games\\Velmora\\", ""},
    };
    for (const auto& [path, image] : cases) {
        EXPECT_EQ(ImageForRecord(path, game), image);
        EXPECT_EQ(ImageForRecord(game + image, game), image) << "committing again changes nothing";
    }
}

} // namespace
} // namespace velmora
