#include "platform/RegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <cerrno>

namespace skarn {

RegularFile readRegularFile(const QString& path, qint64 maximumSize) {
  using Problem = RegularFile::Problem;
  const auto unreadable = [] { return RegularFile{{}, Problem::NotReadable, qt_error_string(errno)}; };

  // The system would take the part before it for the path.
  if (path.contains(QChar::Null)) return {{}, Problem::Missing, {}};
  // Opened without waiting: nobody may be at the other end of a pipe.
  const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) {
    if (errno == ENOENT || errno == ENOTDIR) return {{}, Problem::Missing, {}};
    // What a socket gives.
    if (errno == ENXIO) return {{}, Problem::NotRegular, {}};
    return unreadable();
  }
  QFile file;
  struct stat status = {};
  if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle) ||
      ::fstat(descriptor, &status) != 0) {
    return unreadable();
  }
  if (!S_ISREG(status.st_mode)) return {{}, Problem::NotRegular, {}};
  if (status.st_size > maximumSize) return {{}, Problem::TooLarge, {}};
  // What is appended meanwhile is left out.
  QByteArray bytes = file.read(status.st_size);
  if (file.error() != QFileDevice::NoError) return {{}, Problem::NotReadable, file.errorString()};
  return {std::move(bytes), Problem::None, {}};
}

}  // namespace skarn
