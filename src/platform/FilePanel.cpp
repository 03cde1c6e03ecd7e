#include "platform/FilePanel.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>
#include <initializer_list>

#include "platform/DialogMemory.h"
#include "platform/FileDialogParts.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "platform/ShownName.h"
#include "widgets/Alert.h"
#include "widgets/SheetFlags.h"

namespace skarn {

namespace {

QString startFolder(const QString& directory) {
  QString path = directory;
  QUrl url(directory);
  if (url.isLocalFile()) {
    // With the host taken off, or the path would be one of a network share.
    if (url.host() == QLatin1String("localhost")) url.setHost(QString());
    path = url.toLocalFile();
  }
  if (!path.isEmpty() && QFileInfo(path).isDir()) return path;
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

QString filterFor(const FileTypes& types) {
  if (types.extensions.isEmpty()) return localized("lkeyAllFiles").arg(QStringLiteral("*"));
  QStringList patterns;
  for (const QString& type : types.extensions) patterns << QStringLiteral("*.") + type;
  return types.description.arg(patterns.join(QLatin1Char(' ')));
}

constexpr QSize naturalSize(800, 520);
constexpr int margin = 24;

// The dialog's own tools by their tooltips, and our pictures of them.
struct Tool {
  const char* toolTip;
  const char* picture;
};
constexpr const char* newFolderToolTip = "Create New Folder";
constexpr Tool tools[] = {{"Back", "panelBack.png"},
                          {"Forward", "panelForward.png"},
                          {"Parent Directory", "panelParent.png"},
                          {newFolderToolTip, "panelNewFolder.png"},
                          {"List View", "panelList.png"},
                          {"Detail View", "panelDetails.png"}};

// A name for the file system: a text of the user's without what would make it a path or cannot be seen.
QString fileNameFrom(QString text) {
  for (QChar& character : text) {
    if (character == QLatin1Char('/') || character.category() == QChar::Other_Control) character = QLatin1Char('-');
  }
  return text;
}

// Qt's own dialog and never the desktop's: a folder that is an application has to count as a file, and the desktop's
// would ask about replacing a file under a name that is not yet the final one.
class Panel : public QFileDialog {
 public:
  Panel(QWidget* window, AcceptMode mode, const QString& name, const QString& title, const FileTypes& types,
        const QString& directory, FilePanel::Ended ended)
      : QFileDialog(window, sheetFlags), mTypes(types.extensions) {
    setObjectName(name);
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setOptions(DontUseNativeDialog | DontConfirmOverwrite);
    setAcceptMode(mode);
    forbidDeleting();
    // A missing file is told here; the mode for existing files would disable the button without a word.
    setFileMode(AnyFile);
    setNameFilter(filterFor(types));
    setDirectory(startFolder(directory));
    dress();

    // To enter a package is to choose it; to go to one is to name it.
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString& path) {
      if (isPackage(path)) choose(path);
    });
    connect(this, &QFileDialog::currentChanged, this, [this](const QString& path) {
      if (isPackage(path)) setNameText(QFileInfo(path).fileName());
    });
    connect(this, &QDialog::finished, this, [this, ended = std::move(ended)](int result) {
      if (!ended) return;
      if (result == QDialog::Accepted) {
        ended(FilePanel::okButton, mChosen);
      } else {
        ended(FilePanel::cancelButton, QString());
      }
    });
  }

 protected:
  // Takes the place of the base's, whose warnings wait in a loop of their own.
  void accept() override {
    const QString text = nameText();
    // Without a name, a folder that is selected in the list is entered; else this is the folder that is shown.
    const QString path = text.isEmpty() ? selectedFiles().value(0, directory().path()) : pathOf(text);
    const QFileInfo file(path);
    if (file.isDir() && !isPackage(path)) {
      setDirectory(path);
      setNameText(QString());
    } else if (text.isEmpty()) {
      return;
    } else if (acceptMode() == AcceptSave && !file.absoluteDir().exists()) {
      refuse("lkeyFolderNotFoundTitle", file.absolutePath(), "lkeyFolderNotFoundDesc");
    } else if (acceptMode() == AcceptOpen && !file.exists()) {
      refuse("lkeyFileNotFoundTitle", text, "lkeyFileNotFoundDesc");
    } else if (acceptMode() == AcceptOpen && !hasType(path)) {
      refuse("lkeyFileTypeTitle", text, "lkeyFileTypeDesc");
    } else {
      choose(path);
    }
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) {
      if (auto* button = qobject_cast<QPushButton*>(watched)) explain(*button);
    }
    return QFileDialog::eventFilter(watched, event);
  }

 private:
  static void explain(QPushButton& button) {
    button.setToolTip(button.isEnabled() ? QString() : localized("lkeyNoFileNamed"));
  }

  // Who looks for a file changes nothing in the folder; who saves one may at most make a folder for it.
  void forbidDeleting() {
    setOption(ReadOnly, acceptMode() == AcceptOpen);
    if (auto* button = fileDialogParts::tool(*this, newFolderToolTip)) button->setVisible(acceptMode() == AcceptSave);
    if (auto* action = fileDialogParts::deletion(*this)) {
      action->setVisible(false);
      action->setShortcut({});
    } else {
      setOption(ReadOnly);
    }
    for (QShortcut* shortcut : findChildren<QShortcut*>()) {
      if (shortcut->key() == QKeySequence(QKeySequence::Delete)) shortcut->setEnabled(false);
    }
  }

  // What the dialog brings along looks like another program's.
  void dress() {
    resize(naturalSize);
    setSizeGripEnabled(false);
    layout()->setContentsMargins(margin, margin, margin, margin);
    for (const Tool& tool : tools) {
      if (auto* button = fileDialogParts::tool(*this, tool.toolTip)) {
        button->setIcon(tintedIcon(QLatin1String(tool.picture), palette().color(QPalette::ButtonText)));
      }
    }
    for (QPushButton* button : findChildren<QPushButton*>()) {
      button->setIcon(QIcon());
      button->installEventFilter(this);
      explain(*button);
    }
    // The writer adds the ending, so there is nothing to choose from.
    const std::initializer_list<QWidget*> typeParts = {fileDialogParts::typeCaption(*this),
                                                       fileDialogParts::typeField(*this)};
    for (QWidget* part : typeParts) {
      if (part != nullptr) part->setVisible(acceptMode() == AcceptOpen);
    }
    if (auto* details = findChild<QTreeView*>()) {
      details->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
      details->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
  }

  // Without a field to read, the dialog says what is named.
  QString nameText() const {
    if (const QLineEdit* field = fileDialogParts::nameField(*this)) return field->text();
    return QFileInfo(selectedFiles().value(0)).fileName();
  }
  void setNameText(const QString& text) {
    if (QLineEdit* field = fileDialogParts::nameField(*this)) field->setText(text);
  }

  QString pathOf(const QString& text) const {
    QString path = text;
    if (path == QLatin1String("~") || path.startsWith(QLatin1String("~/"))) path.replace(0, 1, QDir::homePath());
    return QDir::cleanPath(directory().absoluteFilePath(path));
  }

  bool hasType(const QString& path) const {
    return mTypes.isEmpty() || mTypes.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
  }

  // A folder that counts as a file.
  bool isPackage(const QString& path) const {
    return acceptMode() == AcceptOpen && !mTypes.isEmpty() && QFileInfo(path).isDir() && hasType(path);
  }

  void choose(const QString& path) {
    mChosen = path;
    emit fileSelected(path);
    done(QDialog::Accepted);
  }

  void refuse(const char* title, const QString& name, const char* reason) {
    Alert::show(this, localized(title).arg(shownName(name)), localized(reason), {localized("lkeyOK")});
  }

  QStringList mTypes;
  QString mChosen;
};

}  // namespace

QFileDialog* FilePanel::open(QWidget* window, const QString& name, const QString& title, const FileTypes& types,
                             const QString& directory, Ended ended) {
  withholdDialogMemory();
  auto* panel = new Panel(window, QFileDialog::AcceptOpen, name, title, types, directory, std::move(ended));
  panel->open();
  return panel;
}

QFileDialog* FilePanel::save(QWidget* window, const QString& name, const QString& title, const QString& suggestedName,
                             const QString& directory, Ended ended) {
  withholdDialogMemory();
  auto* panel = new Panel(window, QFileDialog::AcceptSave, name, title, {}, directory, std::move(ended));
  panel->selectFile(fileNameFrom(suggestedName));
  panel->open();
  return panel;
}

}  // namespace skarn
