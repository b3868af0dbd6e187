#pragma once

#include "kinds/Statistics.h"

#include <QTimer>
#include <QTreeWidget>
#include <cstddef>
#include <optional>

namespace velmora {

class RecordList;
class RecordWindow;
class Workbench;

/// The dock that counts what there is in a library, in bars; choosing one lists its records. It counts a
/// slice at a time, and only while it can be seen.
class StatisticsPanel : public QTreeWidget {
    Q_OBJECT

  public:
    /// Where an item keeps the share of the longest bar that its own has, and its filter line.
    enum Role { ShareRole = Qt::UserRole, FilterRole };

    StatisticsPanel(RecordWindow& recordWindow, Workbench& workbench, RecordList& list);

    /// True once everything is counted.
    [[nodiscard]] bool Complete() const { return !slices.isActive() && !soon.isActive(); }

  private:
    void Restart();
    void WorkOn();
    void Show(const std::vector<Statistics::Table>& tables);
    void Choose(const QTreeWidgetItem* item);

    RecordWindow& window;
    RecordList& records;
    std::optional<Statistics> counting;
    std::size_t next = 0; ///< position of the record to be counted next
    QTimer soon;          ///< changes often come one upon the other
    QTimer slices;
};

} // namespace velmora
