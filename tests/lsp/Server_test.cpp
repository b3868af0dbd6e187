#include "ServerFixture.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "records/CheckRecords.h"
#include "services/modWriter.h"

namespace velmora::lsp {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string Event(const std::string& name) {
    return SoundEvent(name).GenerateEventString(false);
}

TEST_F(ServerFixture, KnowsItsProtocol) {
    EXPECT_EQ(Ask("textDocument/hover", {})["code"], -32002);
    EXPECT_THAT(Open("Data/A.event", "EVENT"), IsEmpty()) << "not initialized yet";
    const Json answer = Ask("initialize", Json::object());
    EXPECT_EQ(answer["capabilities"]["textDocumentSync"]["change"], 2);
    EXPECT_EQ(Ask("initialize", Json::object())["code"], -32600);
    EXPECT_EQ(Ask("textDocument/rename", {{"textDocument", {{"uri", "file:///x"}}}})["code"], -32601);
    EXPECT_EQ(Ask("workspace/symbol", {})["code"], -32601);
    EXPECT_EQ(Ask("textDocument/hover", {{"textDocument", 5}})["code"], -32602);
    EXPECT_TRUE(Ask("textDocument/hover", At("Data/never opened.event", 0, 0)).is_null());
    EXPECT_THAT(Notify("$/whatever", {}), IsEmpty());
    EXPECT_TRUE(Ask("shutdown", {}).is_null());
    EXPECT_EQ(Ask("textDocument/hover", {})["code"], -32600);
    EXPECT_FALSE(server.Ended());
    Notify("exit", {});
    EXPECT_EQ(server.Ended(), 0);
}

TEST_F(ServerFixture, TellsProblemsOfTheTextAsItIsTyped) {
    Initialize();
    game.Write("Data/A.event", "on disk is something else");
    std::string text = Event("Raid");
    EXPECT_THAT(Open("Data/A.event", text), IsEmpty());
    // Line 3 holds the title; \xC3\xA9 is one character, and so is each of the others before it.
    EXPECT_THAT(Type("Data/A.event", 3, 21, 28, "\"\""), ElementsAre("3: no-title"));
    EXPECT_EQ(diagnostics.back()["range"]["end"]["character"], 23);
    Type("Data/A.event", 3, 22, 22, "\xC3\xA9t\xC3\xA9");
    EXPECT_THAT(Type("Data/A.event", 3, 22, 25, ""), ElementsAre("3: no-title"));
    EXPECT_THAT(Type("Data/A.event", 3, 22, 22, "Three eyes"), IsEmpty());
    EXPECT_THAT(Type("Data/A.event", 7, 0, 0, "  Image \"Gfx\\\\none.pcx\"\nColour mauve\n"),
                ElementsAre("7: no-image", "8: unrecognized-token"));
    EXPECT_THAT(Type("Data/A.event", 1, 0, 5, "EVENTS"), Contains("1: unrecognized-token"));
}

TEST_F(ServerFixture, TellsWhatCheckTellsOfTheSample) {
    Initialize();
    for (const std::string below :
         {"Data/Glitches.event", "Data/CoreModules.SBModule", "Data/FrontierModules.SBModule",
          "Data/UP_Issues/Curiosities.UPIssue", "Data/Bureaucracy.event"}) {
        SCOPED_TRACE(below);
        const std::string path = VELMORA_SAMPLE "/" + below;
        const KindEntry& kind = *KindOfFile(path);
        // By the library's own way.
        std::vector<std::pair<std::size_t, std::string>> wanted;
        Library library(*kind.Kind);
        if (kind.MakeAdmission)
            library.Admit = kind.MakeAdmission();
        LoadRequest request;
        request.Folder =
            Files::PathText(std::filesystem::path(VELMORA_SAMPLE)) + "/" + std::string(kind.Folder);
        request.Problems = [&](const Problem& problem) {
            if (problem.File == Files::NameOf(path))
                wanted.emplace_back(problem.Line, problem.Text);
        };
        library.Load(request);
        CheckRecords(library, CheckContext(VELMORA_SAMPLE "/"),
                     [&](const Record& record, std::vector<Problem>& problems) {
                         for (const Problem& problem : problems)
                             if (record.ShortName == Files::NameOf(path))
                                 wanted.emplace_back(problem.Line, problem.Text);
                     });
        std::vector<std::pair<std::size_t, std::string>> told;
        const Json opened{
            {"textDocument", {{"uri", UriOf(path)}, {"text", CodePage::ToUtf8(Files::ReadWhole(path))}}}};
        for (const Json& message : Notify("textDocument/didOpen", opened))
            for (const Json& diagnostic : message["params"]["diagnostics"])
                if (diagnostic["severity"] != 3 ||
                    !diagnostic["code"].get<std::string>().starts_with("duplicate"))
                    told.emplace_back(diagnostic["range"]["start"]["line"].get<std::size_t>() + 1,
                                      *CodePage::FromUtf8(
                                          ReplaceAll(diagnostic["message"].get<std::string>(), "\n", "\r")));
        EXPECT_THAT(told, ::testing::UnorderedElementsAreArray(wanted));
    }
}

TEST_F(ServerFixture, TellsOfNamesThatOtherFilesHave) {
    Initialize();
    game.Write("Data/A.event", Event("Raid") + Event("Peace"));
    game.Write("Data/C.event", Event("Comet"));
    EXPECT_THAT(Open("Data/B.event", Event("raid")), ElementsAre("41: duplicate-event"));
    EXPECT_THAT(diagnostics.back()["message"].get<std::string>(),
                HasSubstr("EventName = raid, File = B.event"));
    EXPECT_THAT(Type("Data/B.event", 1, 6, 10, "COMET"), ElementsAre("1: duplicate-event"))
        << "the first has a note";
    EXPECT_EQ(diagnostics.back()["severity"], 3);
    Open("Data/C.event", Event("Other"));
    EXPECT_THAT(Type("Data/C.event", 1, 6, 11, "Peace"), ElementsAre("41: duplicate-event"));
    // What stands in one open file is told in the other.
    EXPECT_THAT(Type("Data/C.event", 1, 6, 11, "Comet", "Data/B.event"), ElementsAre("1: duplicate-event"));
    game.Write("Data/A.event", Event("Comet"));
    EXPECT_THAT(Told(Notify("workspace/didChangeWatchedFiles", Json::object()), "Data/B.event"),
                ElementsAre("41: duplicate-event"));
    game.Write("velwriter.ignore", "rule:duplicate-event file:B.event\r\n");
    Notify("workspace/didChangeWatchedFiles", Json::object());
    EXPECT_THAT(Type("Data/B.event", 2, 0, 0, "Colour\n"), ElementsAre("2: unrecognized-token"));
    const auto closed = Notify("textDocument/didClose", {{"textDocument", {{"uri", Uri("Data/B.event")}}}});
    ASSERT_EQ(closed.size(), 1u);
    EXPECT_THAT(closed[0]["params"]["diagnostics"], IsEmpty());
}

TEST_F(ServerFixture, TellsSoManyProblemsOfATextAtMost) {
    Initialize();
    std::string text = "EVENT Raid\nEventType 9999999999\nENDEVENT\n"; // the last problem is the gravest
    for (int i = 0; i < 1000; ++i)
        text.insert(0, "x\n");
    auto told = Open("Data/A.event", text);
    ASSERT_EQ(told.size(), 1001u);
    EXPECT_THAT(told, Contains("1001: load-failure"));
    EXPECT_EQ(diagnostics.back()["code"], "more-problems");
    EXPECT_EQ(diagnostics.back()["message"], "and 1 more");
    EXPECT_EQ(Type("Data/A.event", 0, 0, 1, "//").size(), 1000u);
    Open("Data/B.event", text + text);
    EXPECT_EQ(diagnostics.back()["message"], "and 1 more") << "reading ends at the failure";
}

TEST_F(ServerFixture, TellsOtherFilesThatOneWasClosed) {
    Initialize();
    Open("Data/A.event", Event("Comet"));
    EXPECT_THAT(Open("Data/B.event", Event("Comet")), ElementsAre("41: duplicate-event"));
    // What was typed into it was never written.
    const auto sent = Notify("textDocument/didClose", {{"textDocument", {{"uri", Uri("Data/A.event")}}}});
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[1]["params"], (Json{{"uri", Uri("Data/B.event")}, {"diagnostics", Json::array()}}));
}

TEST_F(ServerFixture, TellsWhatNumbersMeanAndWhatMayStand) {
    Initialize();
    Open("Data/A.event",
         "EVENT Raid\nEventType 1\nGoodAttribute 104\nDescription \"%%\"\nDescStr01 7\n\nENDEVENT\n\n");
    const auto hover = [&](std::size_t line) {
        const Json answer = Ask("textDocument/hover", At("Data/A.event", line, 1));
        return answer.is_null() ? std::string() : answer["contents"]["value"].get<std::string>();
    };
    EXPECT_EQ(hover(0), "");
    EXPECT_THAT(hover(1), HasSubstr("EventType 1: Random"));
    EXPECT_EQ(hover(2), "GoodAttribute 104: Morale\nAffects Morale on all colonies");
    EXPECT_EQ(hover(3), "Description\n2 of 540 characters");
    EXPECT_EQ(hover(4), "DescStr01 7: Planet Name\nName of the planet");
    Type("Data/A.event", 1, 10, 11, "0");
    EXPECT_EQ(hover(2), "") << "colonial events have no such number";

    const auto labels = [&](std::size_t line, std::size_t character) {
        std::vector<std::string> found;
        for (const Json& item : Ask("textDocument/completion", At("Data/A.event", line, character)))
            found.push_back(item["label"]);
        return found;
    };
    EXPECT_THAT(labels(5, 0), ::testing::AllOf(Contains("Title"), Contains("ENDEVENT"),
                                               ::testing::Not(Contains("EventType"))));
    EXPECT_THAT(labels(7, 0), ElementsAre("EVENT"));
    EXPECT_THAT(labels(4, 10), ElementsAre("0", "1", "2", "7", "9", "10", "11"));
    EXPECT_THAT(labels(2, 14), Contains("200"));
    EXPECT_THAT(labels(3, 14), IsEmpty());
}

TEST_F(ServerFixture, LeadsToRecordsAndRequiredModules) {
    Initialize();
    game.Write("Data/A.SBModule", "SBMOD 1 Ring\r\nENDSBMOD\r\n//\r\nSBMOD 2 Choir\r\nENDSBMOD\r\n");
    Open("Data/B.SBModule",
         "SBMOD 3 Big\n Module_Requirement \"choir\"\n Module_Requirement \"None\"\nENDSBMOD\n");
    const Json found = Ask("textDocument/definition", At("Data/B.SBModule", 1, 25));
    EXPECT_EQ(found["uri"], Uri("Data/A.SBModule"));
    EXPECT_EQ(found["range"]["start"]["line"], 3);
    EXPECT_TRUE(Ask("textDocument/definition", At("Data/B.SBModule", 2, 25)).is_null());
    EXPECT_THAT(Ask("textDocument/completion", At("Data/B.SBModule", 1, 22)).dump(), HasSubstr("\"Choir\""));
    const Json symbols = Ask("textDocument/documentSymbol", At("Data/B.SBModule", 0, 0));
    ASSERT_EQ(symbols.size(), 1u);
    EXPECT_EQ(symbols[0]["name"], "Big");
    EXPECT_EQ(symbols[0]["range"]["end"]["line"], 3);
}

TEST_F(ServerFixture, FormatsAsTheEditorWrites) {
    Initialize();
    const auto format = [&](const std::string& file) {
        return Ask("textDocument/formatting", At(file, 0, 0));
    };
    const std::string written = Event("Raid");
    Open("Data/A.event", written);
    EXPECT_THAT(format("Data/A.event"), IsEmpty());
    // One line differs: nothing else is touched.
    Type("Data/A.event", 3, 7, 21, "\t");
    const Json edits = format("Data/A.event");
    ASSERT_EQ(edits.size(), 1u);
    EXPECT_EQ(edits[0]["range"]["start"], (Json{{"line", 3}, {"character", 0}}));
    EXPECT_EQ(edits[0]["range"]["end"], (Json{{"line", 4}, {"character", 0}}));
    EXPECT_EQ(edits[0]["newText"], "  Title              \"Title\"\r\n");
    EXPECT_THAT(messages, IsEmpty());

    Open("Data/A.event", "// why\n" + ReplaceAll(written, "\r\n", "\n"));
    EXPECT_EQ(format("Data/A.event")[0]["newText"], "");
    EXPECT_THAT(messages, ElementsAre("Formatting leaves out: 1 comment"));

    const std::string name = "Data/B.event";
    for (const auto& [text, reason] : std::initializer_list<std::pair<std::string, const char*>>{
             {written + written, "two records are named Raid"},
             {"EVENT Raid\n", "a block has no ENDEVENT"},
             {"", "it holds no record"},
             {"EVENT Raid\nEventType 9999999999\nENDEVENT\n", "Overflow"},
             {"=======\n" + written, "a conflict of a merge is not settled yet"},
             {ReplaceAll(written, "Raid", "R\xEF\xBF\xBD"), "the game's code page lacks"}}) {
        Open(name, text);
        EXPECT_THAT(format(name).value("message", ""), HasSubstr(reason));
        EXPECT_EQ(format(name)["code"], -32803);
    }
    Open("Data/C.SBModule", "SBMOD 1 Ring\nENDSBMOD\n");
    EXPECT_THAT(format("Data/C.SBModule").value("message", ""), HasSubstr("never written"));
}

TEST_F(ServerFixture, TellsOfTextsThatAreNotInTheCodePage) {
    Initialize();
    const std::string text = ReplaceAll(Event("Raid"), "Title\"", "\xC3\xA9\"");
    game.Write("Data/A.event", *CodePage::FromUtf8(text));
    EXPECT_THAT(Open("Data/A.event", text), IsEmpty());
    EXPECT_THAT(Open("Data/B.event", ReplaceAll(text, "\xC3\xA9", "\xF0\x9F\x9A\x80\"\n\"")),
                ElementsAre("3: wrong-encoding", "4: unrecognized-token", "42: duplicate-event"));
    // A character of two units stands in front of what is typed.
    EXPECT_THAT(Type("Data/B.event", 3, 21, 25, "\"\""), ::testing::Not(Contains("3: wrong-encoding")));
    game.Write("Data/A.event", text);
    EXPECT_THAT(Told(Notify("textDocument/didSave", At("Data/A.event", 0, 0)), "Data/A.event"),
                Contains("0: wrong-encoding"))
        << "saved as UTF-8";
    EXPECT_EQ(Ask("textDocument/formatting", At("Data/A.event", 0, 0))["code"], -32803);
}

TEST_F(ServerFixture, AnswersWhateverComes) {
    Initialize();
    const std::string text = "{\"jsonrpc\":\"2.0\",\"id\":7,\"method\":\"textDocument/hover\"}";
    EXPECT_EQ(Sent(Framed("{\"id\":")).at(0)["error"]["code"], -32700);
    EXPECT_EQ(Sent(Framed("{\"id\":\"\xE9\",\"method\":\"x\"}")).at(0)["id"], "\xEF\xBF\xBD");
    EXPECT_EQ(Sent(Framed("[]")).at(0)["error"]["code"], -32600);
    EXPECT_EQ(Sent(Framed("{\"id\":7}")).at(0)["id"], 7);
    EXPECT_THAT(Sent(Framed("{\"id\":7,\"result\":null,\"error\":{}}")), IsEmpty());
    EXPECT_EQ(Sent("Hello\r\n\r\n").at(0)["error"]["code"], -32600);
    EXPECT_EQ(Sent("Content-Length: x\r\n\r\n").size(), 1u);
    const auto nested = [&](std::size_t depth) {
        return Sent(Framed("{\"id\":7,\"method\":\"x\",\"params\":[\"\\\"]\"," + std::string(depth, '[') +
                           std::string(depth, ']') + "]}"))
            .at(0)["error"]["code"];
    };
    EXPECT_EQ(nested(98), -32601);
    EXPECT_EQ(nested(99), -32700);
    EXPECT_EQ(nested(100'000), -32700);
    EXPECT_EQ(
        Sent(Framed("{\"id\":7,\"method\":\"x\",\"params\":\"" + std::string(500, '[') + "\"}")).at(0)["id"],
        7);
    // Half a message waits; garbage in front of one does not keep it.
    const std::string framed = Framed(text);
    EXPECT_THAT(Sent(framed.substr(0, 30)), IsEmpty());
    EXPECT_EQ(Sent(framed.substr(30)).at(0)["error"]["code"], -32602);
    EXPECT_EQ(Sent("garbage" + framed + framed).size(), 2u);
    EXPECT_EQ(Sent(std::string(100000, 'x')).size(), 1u);
    EXPECT_EQ(Sent("\r\n\r\n" + framed).back()["error"]["code"], -32602);
    for (const char* params : {"{}", "{\"textDocument\":{\"uri\":5,\"text\":6}}", "[1]", "null",
                               "{\"textDocument\":{\"uri\":\"file:///%00.event\",\"text\":\"x\"}}"})
        for (const char* method : {"didOpen", "didChange", "didClose", "didSave"})
            Sent(Framed("{\"method\":\"textDocument/" + std::string(method) + "\",\"params\":" + params +
                        "}"));
    Open("Data/A.event", Event("Raid"));
    Type("Data/A.event", 9999999, 0, 9999999, "// at the end");
    Type("Data/A.event", 3, 9999999, 0, "");
    EXPECT_EQ(Ask("textDocument/documentSymbol", At("Data/A.event", 0, 0)).size(), 1u);
}

TEST_F(ServerFixture, PassesOverWhatIsTooLong) {
    Initialize();
    const std::size_t length = 100u << 20;
    EXPECT_THAT(Sent("Content-Length: " + std::to_string(length) + "\r\n\r\n")
                    .at(0)["error"]["message"]
                    .get<std::string>(),
                HasSubstr("a message of 104857600 bytes"));
    const std::string piece(1 << 20, '{');
    for (std::size_t sent = 0; sent < length; sent += piece.size())
        ASSERT_THAT(Sent(piece), IsEmpty());
    EXPECT_EQ(Ask("textDocument/hover", {})["code"], -32602) << "the next message is read again";

    // Many texts that are short enough each.
    std::ostringstream told;
    Server small(told, 100'000);
    small.Receive(Framed(Json{{"id", 1}, {"method", "initialize"}}.dump()));
    for (int i = 0; i < 4; ++i)
        small.Receive(Framed(
            Json{{"method", "textDocument/didOpen"},
                 {"params",
                  {{"textDocument",
                    {{"uri", Uri(std::to_string(i) + ".event")}, {"text", std::string(30'000, ' ')}}}}}}
                .dump()));
    EXPECT_THAT(told.str(), HasSubstr("3.event is not looked at any more"));
}

} // namespace
} // namespace velmora::lsp
