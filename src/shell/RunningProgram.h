#pragma once

#include "platform/FileLock.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <chrono>
#include <optional>
#include <string>

namespace velmora {

/// Of the programs that use one home, the first has it; later starts lead to that one, by way of a file
/// there.
class RunningProgram : public QObject {
    Q_OBJECT

  public:
    /// What a start does first, with the file it was asked to open or none. False when another program has
    /// the home and does the rest.
    bool Begin(const std::string& file);

    /// How long a start waits for the program that has the home to answer.
    static inline std::chrono::milliseconds Patience{5000};

  signals:
    /// Another start asks this program to come to the front and, unless it is empty, to open a file.
    void Requested(const std::string& file);

  private:
    bool Take();
    static bool HandOver(const std::string& file);
    void TakeRequest();

    std::optional<FileLock> lock;
    QFileSystemWatcher watcher;
};

} // namespace velmora
