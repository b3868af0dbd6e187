#pragma once

#include "services/ProblemMessages.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// Prompts that a test answers beforehand. Installs itself for its lifetime. Questions must come in the order
/// in which they are expected; one that was not expected, or never came, fails the test. Messages and errors
/// need no expectation. In expected texts and in the transcript a carriage return is shown as "|".
class ScriptedPrompts : public Prompts {
  public:
    ScriptedPrompts() : previous(std::exchange(gPrompts, this)) {}
    ScriptedPrompts(const ScriptedPrompts&) = delete;
    ScriptedPrompts& operator=(const ScriptedPrompts&) = delete;
    ~ScriptedPrompts() override {
        gPrompts = previous;
        ProblemMessages::AsOneList = false;
        for (const Expected& missing : expected)
            ADD_FAILURE() << "never asked: " << missing.Kind << ": " << missing.Text;
    }

    /// The next questions with their answers. An empty text expects any question of that kind.
    ScriptedPrompts& ExpectAsk(const std::string& text, bool yes) {
        return Expect("Ask", text, yes ? "Yes" : "No");
    }
    ScriptedPrompts& ExpectInput(const std::string& prompt, const std::string& answer) {
        return Expect("Input", prompt, answer);
    }
    ScriptedPrompts& ExpectPickFolder(const std::string& title, const std::string& answer) {
        return Expect("PickFolder", title, answer);
    }
    ScriptedPrompts& ExpectPickFile(const std::string& title, const std::string& answer) {
        return Expect("PickFile", title, answer);
    }

    /// One line a prompt: "Message[Exclamation]: text", "Ask[No default]: text -> Yes", "Input: prompt ->
    /// answer".
    std::vector<std::string> Transcript;
    std::vector<Question> Questions;  ///< every question asked, with its details
    std::vector<std::string> Details; ///< of every message
    std::vector<FileRequest> FileRequests;
    std::vector<std::string> PickedFrom; ///< where each picker of folders started
    std::vector<ErrorDetails> Errors;    ///< every error reported
    std::vector<std::string> ProgressTitles;
    std::string UserNote;        ///< what the person types into the error dialog
    bool ShowRestAsList = false; ///< answer to the offer of a message in a series

    /// The transcript so far, which starts anew.
    std::vector<std::string> TakeTranscript() { return std::exchange(Transcript, {}); }

    void Message(const std::string& text, Icon icon, const std::string& details) override {
        Details.push_back(details);
        Transcript.push_back("Message" + IconTag(icon) + ": " + Shown(text));
    }
    bool MessageInSeries(const std::string& text, Icon icon, const std::string& details) override {
        Message(text, icon, details);
        return ShowRestAsList;
    }
    void MessageList(const std::vector<std::string>& texts) override {
        for (const std::string& text : texts)
            Transcript.push_back("List: " + Shown(text));
    }
    bool Ask(const Question& question) override {
        Questions.push_back(question);
        const std::string tag = question.DefaultNo ? "[No default]" : "";
        return Answer("Ask", tag, question.Text, "No") == "Yes";
    }
    std::string Input(const std::string& prompt) override { return Answer("Input", "", prompt, ""); }
    std::string PickFolder(const std::string& title, const std::string& start) override {
        PickedFrom.push_back(start);
        return Answer("PickFolder", "", title, "");
    }
    std::string PickFile(const FileRequest& request) override {
        FileRequests.push_back(request);
        return Answer("PickFile", "", request.Title, "");
    }
    std::string ReportError(const ErrorDetails& error) override {
        Errors.push_back(error);
        Transcript.push_back("Error[" + std::to_string(error.Number) + "]: " + Shown(error.Description));
        return UserNote;
    }
    void ShowTextFile(const std::string& path) override { Transcript.push_back("ShowTextFile: " + path); }
    std::unique_ptr<Progress> StartProgress(const std::string& title) override {
        struct Silent : Progress {
            void Working(const std::string& /*item*/, std::size_t /*done*/, std::size_t /*total*/) override {}
        };
        ProgressTitles.push_back(title);
        return std::make_unique<Silent>();
    }

  private:
    struct Expected {
        std::string Kind;
        std::string Text;
        std::string Answer;
    };

    ScriptedPrompts& Expect(const std::string& kind, const std::string& text, const std::string& answer) {
        expected.push_back({kind, Shown(text), answer});
        return *this;
    }

    std::string Answer(const std::string& kind, const std::string& tag, const std::string& text,
                       std::string answer) {
        const std::string shown = Shown(text);
        if (expected.empty()) {
            ADD_FAILURE() << "unexpected " << kind << ": " << shown;
        } else {
            const Expected next = std::move(expected.front());
            expected.pop_front();
            if (next.Kind != kind || (!next.Text.empty() && next.Text != shown))
                ADD_FAILURE() << "expected " << next.Kind << ": " << next.Text << "\nbut got " << kind << ": "
                              << shown;
            else
                answer = next.Answer;
        }
        Transcript.push_back(kind + tag + ": " + shown + " -> " + answer);
        return answer;
    }

    static std::string IconTag(Icon icon) {
        switch (icon) {
        case Icon::Information:
            return "[Information]";
        case Icon::Exclamation:
            return "[Exclamation]";
        case Icon::Critical:
            return "[Critical]";
        default:
            return "";
        }
    }

    static std::string Shown(std::string text) {
        for (char& c : text)
            if (c == '\r')
                c = '|';
        return text;
    }

    Prompts* previous;
    std::deque<Expected> expected;
};

} // namespace velmora
