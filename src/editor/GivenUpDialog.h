#pragma once

#include <QDialog>
#include <string>
#include <vector>

class QTreeWidget;

namespace velmora {

/// Lets the user choose among work that was given up.
class GivenUpDialog : public QDialog {
    Q_OBJECT

  public:
    struct Entry {
        std::string Title;
        std::vector<std::string> Lines; ///< a record each, with its fields
    };
    GivenUpDialog(const std::vector<Entry>& entries, QWidget* parent);

    /// Position of the entry chosen, -1 for none.
    [[nodiscard]] int Choose();

  private:
    QTreeWidget* tree;
};

} // namespace velmora
