// Files that hold one settings record, a profile or a macro, as a property list: how they are read, checked, written,
// and how the user hears what went wrong. Main thread.
#pragma once

#include <QString>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"

class QWidget;

namespace skarn {

// A member that a record must have, and of which type.
struct RecordMember {
  enum class Type { Name, Dictionary, Array };  // Name: a string that is not empty, the name of the whole
  std::string_view key;
  Type type;
};

struct RecordFileContents {
  vorn::PropertyList record;  // a dictionary; none when there is a problem
  QString problem;            // a sentence for the user; empty when all is well
};

// Reads a regular file of either property-list encoding; anything else, and a record without one of the members, is a
// problem. Further members are kept as they are. Nothing here crashes or hangs, whatever lies under the path.
RecordFileContents readRecordFile(const QString& path, const std::vector<RecordMember>& members);

// Writes the record as a binary property list: the whole file or, on failure, nothing. Returns the problem as a
// sentence for the user, empty on success.
QString writeRecordFile(const QString& path, const vorn::PropertyList& record);

// Writes the record; where the file exists, first asks on a sheet of the window whether to replace it. A failure is
// told on a sheet.
void exportRecord(QWidget* window, const QString& path, const vorn::PropertyList& record);

// Tells on a sheet of the window why a file was not imported.
void showImportProblem(QWidget* window, const QString& path, const QString& problem);

}  // namespace skarn
