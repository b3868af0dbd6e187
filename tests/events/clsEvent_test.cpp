#include "events/EventRules.h"
#include "events/clsEvent.h"

#include "TempFolder.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;

TEST(clsEvent, RemembersItsStatus) {
    clsEvent event;
    event.IsDirty = event.IsBeingAdded = event.ToBeDeleted = true;
    EXPECT_EQ(event.Status(), "MARKED FOR DELETION");
    event.IsDirty = event.IsBeingAdded = event.ToBeDeleted = false;
    EXPECT_EQ(event.Status(), "MARKED FOR DELETION");
}

TEST(EventRules, ListEveryReasonInOrder) {
    const TempFolder game;
    Catalogue subs;
    BuildWildCardSubs(subs);
    const auto rules = [&](const clsEvent& event) {
        std::vector<std::string> found;
        for (const Problem& reason : CheckEvent(event, game.Path(), subs))
            found.emplace_back(reason.Rule);
        return found;
    };
    clsEvent event;
    EXPECT_THAT(rules(event), ElementsAre("no-title", "no-image", "no-description", "no-good-option",
                                          "no-neutral-option", "no-evil-option"));
    event.Title = " "; // enough for a title
    event.Description = "%s %S %s %s %s";
    event.DescStr01 = event.DescStr02 = event.DescStr03 = event.DescStr04 = 11;
    event.GoodOption = event.EvilOption = "%s";
    event.GoodOptStr01 = 1;
    event.NeutralOption = "Wait";
    event.NeutralOptStr01 = 9;
    event.EvilOptStr01 = 3; // stands for nothing
    EXPECT_THAT(rules(event), ElementsAre("no-image", "too-many-wild-cards", "wild-cards-missing",
                                          "wild-card-count", "wild-card-placement", "wild-card-count"));
}

TEST(EventRules, NormalizeWhatShowingNormalizes) {
    clsEvent event;
    event.Description = event.GoodOption = event.NeutralOption = event.EvilOption = "100% of %S, 5%%";
    event.MoralityWeight = 9;
    EventKind.Normalize(event);
    EXPECT_THAT((std::vector{event.Description, event.GoodOption, event.NeutralOption, event.EvilOption}),
                ::testing::Each("100%% of %s, 5%%"));
    EXPECT_EQ(event.MoralityWeight, 5);
}

TEST(EventRules, DoubleAPicturesBackslashesOnce) {
    const std::string game = "C:\\Games\\Velmora\\";
    for (const auto& [path, image] : {std::pair{"c:\\games\\velmora\\GFX\\Raid.pcx", "GFX\\\\Raid.pcx"},
                                      {"C:/Games/Velmora/GFX/Raid.pcx", "GFX\\\\Raid.pcx"},
                                      {"C:\\Games\\Velmora\\Art\\\\Raid.pcx", "Art\\\\Raid.pcx"},
                                      {"D:\\Raid.pcx", "D:\\\\Raid.pcx"},
                                      {"C:\\Games\\Velmora\\", ""}}) {
        EXPECT_EQ(ChosenImage(path, game), image);
        EXPECT_EQ(ImageForRecord(game + image, game), image) << "committing again changes nothing";
    }
}

} // namespace
} // namespace velmora
