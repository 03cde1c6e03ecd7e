// Reading of files that others wrote. Main thread.
#pragma once

#include <QByteArray>
#include <QString>

namespace skarn {

struct RegularFile {
  enum class Problem { None, Missing, NotRegular, NotReadable, TooLarge };

  QByteArray bytes;  // all of them; empty when there is a problem
  Problem problem = Problem::None;
  QString reason;  // what the system says where the file is not readable
};

// Reads a whole file of at most maximumSize bytes. Symbolic links are followed; folders, pipes, sockets and devices are
// refused and never waited for.
RegularFile readRegularFile(const QString& path, qint64 maximumSize);

}  // namespace skarn
