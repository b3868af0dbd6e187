#include "platform/PrefixRegistry.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace velmora {
namespace {

using namespace std::string_literals;

const std::string Text = R"(WINE REGISTRY Version 2
;; All keys relative to \\Machine

[Hardware\\Odd\[1\]] 1700000000 5
"Path"="in brackets"
[Software\\Corvane\\Velmora] 1700000001
#time=1da1a2b3c4d5e6f
@="default \"quoted\""
"Path"="C:\\Games\\Velmora"
"Expand"=str(2):"%ProgramFiles%\\Velmora"
"Multi"=str(7):"one\0two\0"
"Count"=dword:0000002a
"Raw"=hex:01,02,\
  03
"Wide"=hex(1):41,00,00,00
"Open"="never closed
"Marks"="\x20ac5 caf\xe9 \101\t|\q"
"Mixed"="café \xd83d\xde80"
"Stray"="\xd83d!"
[Software\\Corvane] 1700000002
"Other"="parent"
)";

const std::string Velmora = "SOFTWARE\\corvane\\Velmora";

TEST(PrefixRegistry, ReadsValues) {
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [key, name, expected] :
         {Case{Velmora, "path", "1 C:\\Games\\Velmora\0"s}, Case{Velmora, "", "1 default \"quoted\"\0"s},
          Case{Velmora, "Expand", "2 %ProgramFiles%\\Velmora\0"s}, Case{Velmora, "Multi", "7 one\0two\0\0"s},
          Case{Velmora, "Count", "4 *\0\0\0"s}, Case{Velmora, "Raw", "3 \1\2\3"},
          Case{"Hardware\\Odd[1]", "Path", "1 in brackets\0"s},
          // Texts come in the code page; what it lacks is marked.
          Case{Velmora, "Marks", "1 \x80"s + "5 caf\xE9 A\t|q\0"s},
          Case{Velmora, "Mixed", "1 caf\xE9 \x7F\xF0\x9F\x9A\x80\0"s}, Case{Velmora, "Stray", "1 ?!\0"s},
          Case{Velmora, "Other", "nothing"}, Case{Velmora, "Wide", "nothing"},
          Case{Velmora, "Open", "nothing"}, Case{"Software", "Path", "nothing"}}) {
        const auto value = PrefixRegistry::Read(Text, key, name);
        EXPECT_EQ(value ? std::to_string(static_cast<int>(value->Type)) + ' ' + value->Bytes : "nothing",
                  expected);
    }
    EXPECT_TRUE(PrefixRegistry::KeyExists(Text, "software\\corvane"));
    for (const char* key : {"software", ""})
        EXPECT_FALSE(PrefixRegistry::KeyExists(Text, key));
}

TEST(PrefixRegistry, SurvivesACutAnywhere) {
    for (std::size_t size = 0; size < Text.size(); ++size)
        for (const char* name : {"Path", "Multi", "Raw", "Marks", "Stray"}) {
            const auto value = PrefixRegistry::Read(Text.substr(0, size) + '\\', Velmora, name);
            EXPECT_TRUE(!value || value->Bytes.size() < 64) << size;
        }
}

} // namespace
} // namespace velmora
