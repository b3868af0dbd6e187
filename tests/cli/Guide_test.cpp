// The pages of the user guide lead to one another, and show what the tour shows.
#include "cli/CliRun.h"

#include <gmock/gmock.h>

#include <regex>
#include <set>

namespace velmora {
namespace {

namespace fs = std::filesystem;

std::set<std::string> NamesIn(const std::string& folder, const std::string& extension) {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(ProjectPath(folder)))
        if (entry.path().extension() == extension)
            names.insert(entry.path().filename().string());
    return names;
}

/// The targets of a page's pictures or, else, of its links.
std::set<std::string> Targets(const std::string& page, bool pictures) {
    static const std::regex pattern(R"((!?)\[[^\]]*\]\(([^)]*)\))");
    const std::string text = ReadProjectFile("docs/guide/" + page);
    std::set<std::string> targets;
    for (std::sregex_iterator link(text.begin(), text.end(), pattern), end; link != end; ++link)
        if ((*link)[1].matched && ((*link)[1].length() == 1) == pictures)
            targets.insert((*link)[2]);
    return targets;
}

TEST(GuideTest, LinksLeadToPagesAndTheIndexToAll) {
    const std::set<std::string> pages = NamesIn("docs/guide", ".md");
    std::set<std::string> listed = Targets("index.md", false);
    listed.insert("index.md");
    EXPECT_EQ(listed, pages);
    for (const std::string& page : pages)
        for (const std::string& target : Targets(page, false))
            EXPECT_TRUE(pages.count(target)) << page << " leads to " << target;
}

TEST(GuideTest, ShowsPicturesOfTheTourOnly) {
    std::set<std::string> shown;
    for (const std::string& page : NamesIn("docs/guide", ".md"))
        for (const std::string& target : Targets(page, true))
            shown.insert(fs::path(target).filename().string());
    EXPECT_EQ(shown, NamesIn("docs/guide/images", ".png"));
    const std::string tour = ReadProjectFile("tour/main.cpp");
    for (const std::string& picture : shown)
        EXPECT_THAT(tour, ::testing::HasSubstr('(' + ('"' + fs::path(picture).stem().string() + "\")")));
}

} // namespace
} // namespace velmora
