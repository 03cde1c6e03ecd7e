// Profile and macro files (model/RecordFile.h) as the user meets them: what is wrong with one, in the user's language,
// and the sheets that ask and tell. Main thread.
#pragma once

#include <QString>
#include <vector>

#include "model/RecordFile.h"

class QWidget;

namespace skarn {

class Notice;

struct ImportedRecord {
  vorn::PropertyList record;  // none when there is a problem
  QString problem;            // a sentence for the user; empty when all is well
};

ImportedRecord importRecord(const QString& path, vorn::RecordKind kind);

// Writes the record; where the file exists, first asks on a sheet of the window whether to replace it. A failure is
// told on a sheet; where the file went, on the notice, if there is one then.
void exportRecord(QWidget* window, const QString& path, const vorn::PropertyList& record, vorn::RecordKind kind,
                  Notice* notice = nullptr);

// A folder of profile files (model/ProfileFolder.h).
struct ImportedFile {
  QString path;
  ImportedRecord contents;
};
struct ImportedFolder {
  std::vector<ImportedFile> files;  // in their order; none when there is a problem
  QString problem;                  // of the folder, a sentence for the user
};
ImportedFolder importProfileFolder(const QString& path);
// Makes the folder with a file of each profile. A failure, also that something exists there, is told on a sheet of the
// window; where the folder is, on the notice.
void exportProfileFolder(QWidget* window, const QString& path, const vorn::PropertyList& profiles, Notice& notice);

// Tells on a sheet of the window why a file was not imported.
void showImportProblem(QWidget* window, const QString& path, const QString& problem);

}  // namespace skarn
