#pragma once

#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "platform/Files.h"
#include "records/Edits.h"
#include "records/Journal.h"
#include "records/Library.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// A library of one kind over a data directory of its own.
struct LibraryInFolder {
    LibraryInFolder(const RecordKind& kind, std::string own) : library(kind), ownFile(std::move(own)) {
        Files::CreateFolder(data);
        Files::CreateFolder(backups);
    }

    /// Loads anew. What it has to tell comes into `texts`, "|" for 13: "a.event:2: text [rule]".
    bool Load(bool autoBackup = false) {
        texts.clear();
        library.Clear();
        LoadRequest request;
        request.Folder = data;
        request.BackupFolder = backups;
        request.OwnFile = ownFile;
        request.MakeBackups = true;
        request.AutoBackup = autoBackup;
        request.Problems = [this](const Problem& finding) {
            texts.push_back(finding.File + ":" + std::to_string(finding.Line) + ": " +
                            ReplaceAll(finding.Text, "\r", "|") + " [" + std::string(finding.Rule) + "]");
        };
        return library.Load(request);
    }
    void Put(const std::string& name, const std::string& text) { Files::ReplaceSafely(data + name, text); }
    [[nodiscard]] std::string Get(const std::string& name) const { return Files::ReadWhole(data + name); }

    [[nodiscard]] std::string Block(const std::string& name, const std::string& lines = {}) const {
        return std::string(library.Kind.Header) + " " + name + "\r\n" + lines +
               std::string(library.Kind.End) + "\r\n";
    }
    /// Changes a record as a commit does.
    void Edit(const std::string& name, const std::function<void(Record&)>& edit = {}) {
        Edits::Step step(library, "commit of " + name);
        Record& record = step.Change(name);
        record.IsDirty = true;
        record.IsBeingAdded = false;
        if (edit)
            edit(record);
        library.Kind.Normalize(record);
        edits.Do(std::move(step));
    }
    /// Edits a record's first text.
    void Title(const std::string& name, const std::string& title) {
        Edit(name, [&](Record& record) { library.Kind.Fields[0].SetText(record, title); });
    }
    /// Adds a record as a commit does.
    void Add(const std::string& name, const std::string& file,
             const std::function<void(Record&)>& edit = {}) {
        edits.Open(AddStep(name, file));
        Edit(name, edit);
    }
    [[nodiscard]] Edits::Step AddStep(const std::string& name, const std::string& file) const {
        Edits::Step step(library, "addition of " + name);
        step.Add(name, data, file);
        return step;
    }
    void Move(const std::string& name, const std::string& oldFile, const std::string& newFile) {
        Edits::Step step(library, "moving of " + name);
        step.Move(name, data, oldFile, newFile);
        edits.Do(std::move(step));
    }
    /// What a new run finds in a journal: names and first texts, then whether it complains.
    std::vector<std::string> LeftIn(const std::string& journal, const std::string& folder) {
        Journal::Leftover found;
        Journal(library).Find(journal, folder, found);
        std::vector<std::string> left;
        for (const auto& [name, record] : found.Records)
            left.push_back(name + " " + std::string(library.Kind.Fields[0].TextOf(*record)));
        for (const std::string& name : found.RemovedRecords)
            left.push_back(name + " removed");
        EXPECT_THAT(found.Complaint, ::testing::AnyOf("", ::testing::HasSubstr(journal)));
        if (!found.Complaint.empty())
            left.emplace_back("complaint");
        return left;
    }
    /// Each record's name and file.
    using Places = std::map<std::string, std::string>;
    [[nodiscard]] Places PlacesInMemory() const {
        Places places;
        for (const auto& [name, record] : library)
            places[name] = record.ShortName;
        return places;
    }
    /// What a new run would load.
    [[nodiscard]] Places PlacesOnDisk() const {
        LibraryInFolder next(library.Kind, ownFile);
        next.data = data;
        next.Load();
        return next.PlacesInMemory();
    }

    TempFolder temp;
    std::string data = temp.Path() + "Data/";
    std::string backups = temp.Path() + "BackupData/";
    Library library;
    Edits edits{library, {.Steps = 100'000}};
    std::string ownFile;
    std::vector<std::string> texts;
};

class LibraryFixture : public ::testing::Test, protected LibraryInFolder {
  protected:
    LibraryFixture(const RecordKind& kind, std::string own) : LibraryInFolder(kind, std::move(own)) {
        handler.Unattended = true;
        gErrHandler = &handler;
    }
    ~LibraryFixture() override { gErrHandler = nullptr; }

    /// Loads under an event routine; the failure's description and call stack.
    std::vector<std::string> LoadFailing(bool autoBackup = false) {
        ScriptedPrompts prompts;
        handler.Unattended = false;
        TrapEvent(library.Kind.Routine("Form_Load"), NoInputParms, [&] { Load(autoBackup); });
        std::vector<std::string> seen = handler.LastCallStack();
        for (const ErrorDetails& error : prompts.Errors)
            seen.insert(seen.begin(),
                        std::to_string(error.Number) + " " + error.Description + " " + error.Parameters);
        return seen;
    }

    template <class RecordType>
    const RecordType& As(std::size_t at) const {
        return static_cast<const RecordType&>(library.At(at));
    }
    /// All records as they are written.
    [[nodiscard]] std::string Blocks() const {
        std::string blocks;
        for (const auto& [name, record] : library)
            AppendBlock(library.Kind, record, blocks);
        return blocks;
    }
    /// Each record's name and number.
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& [name, record] : library)
            names.push_back(name + " " + std::to_string(library.Kind.NumberOf(record)));
        return names;
    }
    /// Each file's name and item.
    [[nodiscard]] std::vector<std::string> FileNames() const {
        std::vector<std::string> names;
        for (const auto& [name, item] : library.FileList())
            names.push_back(name + " " + std::to_string(item));
        return names;
    }

    /// Every byte that a quoted text can hold.
    static std::string AllBytes() {
        std::string bytes;
        for (int byte = 1; byte < 256; ++byte)
            if (byte != '"' && byte != '\r' && byte != '\n')
                bytes += static_cast<char>(byte);
        return bytes;
    }

    /// Writes records of every byte and any number, and expects them back from the file.
    void ExpectEveryByteBack(std::size_t count) {
        const std::string file = "a" + std::string(library.Kind.Extension);
        std::mt19937 random(7);
        for (std::size_t i = 0; i < count; ++i)
            Add("Record_" + std::to_string(i), file, [&](Record& record) {
                for (const Field& field : library.Kind.Fields)
                    if (field.Type == FieldType::Text)
                        field.SetText(record, AllBytes().substr(random() % AllBytes().size()) + " \xE9\x81 ");
                    else
                        field.SetNumber(record, static_cast<std::int32_t>(random()));
            });
        const std::string written = Blocks();
        library.WriteFiles(data, {file});
        EXPECT_EQ(Get(file), written);
        ASSERT_TRUE(Load());
        EXPECT_THAT(texts, ::testing::IsEmpty());
        EXPECT_EQ(library.Count(), count);
        EXPECT_EQ(Blocks(), written);
    }

    clsError handler;
};

} // namespace velmora
