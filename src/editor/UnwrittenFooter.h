#pragma once

#include "records/Edits.h"

#include <QLabel>
#include <string>
#include <string_view>
#include <unordered_map>

namespace velmora {

/// Tells how many records are not yet written to file, and is pressed like a button to write them.
class UnwrittenFooter : public QLabel {
    Q_OBJECT

  public:
    explicit UnwrittenFooter(const Library& countedLibrary, QWidget* parent = nullptr);

    void Follow(const Edits::Change& change);
    /// Counts anew.
    void Recount();

  signals:
    void Pressed();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Note(std::string_view name, const Record* record);
    void Tell();

    const Library& library;
    std::unordered_map<std::string, std::string> changed; // folded name to file
    std::unordered_map<std::string, std::size_t> files;   // how many of these each has
};

} // namespace velmora
