#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

/// What every record carries beside its content; none of it is ever written to a file.
class Record {
  public:
    virtual ~Record() = default;

    std::string FileName;         ///< full path of the file the record belongs to
    std::string ShortName;        ///< that file's name with extension
    std::int32_t OrigNumber = 0;  ///< 1-based position at load or creation
    std::int32_t FileOnDisk = -1; ///< position in the library's files of the one that holds it on disk
    std::size_t HeaderLine = 0;   ///< 1-based line of its header in its file, 0 for one made in the editor
    bool IsDirty = false;         ///< committed, not yet written
    bool IsBeingAdded = false;    ///< created, not yet committed
    bool ToBeDeleted = false;     ///< left out at the next write

    /// Status text: of the first flag that is set, which is stored too; else the text last stored.
    const std::string& Status() const {
        if (ToBeDeleted)
            status = "MARKED FOR DELETION";
        else if (IsBeingAdded)
            status = AddingStatus();
        else if (IsDirty)
            status = "EDITED, PENDING A WRITE TO FILE";
        return status;
    }
    void SetStatus(const std::string& text) { status = text; }

    /// Status text of a record that is being added.
    [[nodiscard]] virtual std::string_view AddingStatus() const = 0;

  protected:
    Record() = default;
    Record(const Record&) = default;
    Record& operator=(const Record&) = default;

  private:
    mutable std::string status; // a read that finds a flag stores what it tells
};

} // namespace velmora
