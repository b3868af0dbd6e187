#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

enum class Icon { None, Information, Exclamation, Critical };

/// A Yes/No question. `Details` is shown below the question's own text, on demand or from the start.
struct Question {
    std::string Text;
    bool DefaultNo = false;
    std::string Details = {};
    bool DetailsOpen = false;
};

/// A request for an existing file. `Folder` is where the picker starts; `Pattern` is like "*.pcx".
struct FileRequest {
    std::string Title;
    std::string Folder;
    std::string Pattern;
    std::string FilterText;
};

/// What the error dialog shows.
struct ErrorDetails {
    std::int32_t Number = 0;
    std::int32_t Line = 0;
    std::string Description;
    std::string Source;
    std::string Time;
    std::string CallStack; ///< one routine a line, CR LF after each
    std::string Parameters;
    bool OfferDetails = true;
    bool CollectUserInput = false;
};

/// Shown while something long runs; gone when destroyed. Cannot be cancelled.
class Progress {
  public:
    virtual ~Progress() = default;
    virtual void Working(const std::string& item, std::size_t done, std::size_t total) = 0;
};

/// Everything the program asks of or tells a person. The windows answer with real dialogs, the command line
/// prints, tests script it. Texts are code-page bytes; a carriage return (13) is a line break.
class Prompts {
  public:
    virtual ~Prompts() = default;

    /// Message box with an OK button. `details` is shown on demand, below the text.
    virtual void Message(const std::string& text, Icon icon = Icon::None,
                         const std::string& details = {}) = 0;
    /// The same as one of many: also offers "Show the remaining messages as one list". True when taken up.
    virtual bool MessageInSeries(const std::string& text, Icon icon = Icon::None,
                                 const std::string& details = {}) = 0;
    /// One scrollable list of messages that can be copied.
    virtual void MessageList(const std::vector<std::string>& texts) = 0;
    /// True for Yes.
    virtual bool Ask(const Question& question) = 0;
    /// Input box; empty when cancelled. Characters that the code page lacks are refused there.
    virtual std::string Input(const std::string& prompt) = 0;
    /// Chosen folder, ending in a separator; empty when cancelled. The picker starts at `start`.
    virtual std::string PickFolder(const std::string& title, const std::string& start) = 0;
    /// Full path of the chosen file; empty when cancelled.
    virtual std::string PickFile(const FileRequest& request) = 0;
    /// Error dialog; returns what the person typed.
    virtual std::string ReportError(const ErrorDetails& error) = 0;
    /// Shows a text file in the host's text viewer and goes on without waiting.
    virtual void ShowTextFile(const std::string& path) = 0;
    /// Progress display for work that may take longer than about half a second.
    virtual std::unique_ptr<Progress> StartProgress(const std::string& title) = 0;
};

/// The prompts of this process; set before anything else runs.
inline Prompts* gPrompts = nullptr;

} // namespace velmora
