// Against the real book and against books of the test's own.
#include "platform/HelpBook.h"

#include <QApplication>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>

#include "platform/Bundle.h"
#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;

namespace {

void writeFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QCOMPARE(file.write(bytes), static_cast<qint64>(bytes.size()));
}

QWidget* helpWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == QLatin1String("helpWindow")) return widget;
  }
  return nullptr;
}

}  // namespace

class HelpBookTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void aHelpBookWithoutItsFolderIsNotRegistered() {
    QVERIFY(!HelpBook::registerBook(QStringLiteral("Lost"), QStringLiteral("/no/such/folder")));
    QVERIFY(!HelpBook::registerBook(QStringLiteral("Lost"), QString()));
    QCOMPARE(HelpBook::openPage(QStringLiteral("Lost"), QStringLiteral("index.html")), nullptr);
    QCOMPARE(helpWindow(), nullptr);
  }

  void aPageOfARegisteredBookIsShownAndFollowed() {
    QTemporaryDir folder;
    writeFile(folder.filePath(QStringLiteral("index.html")), "<h1>Contents</h1><a href='next.html'>Next</a>");
    writeFile(folder.filePath(QStringLiteral("next.html")), "<h1>Second page</h1>");
    const QString title = QStringLiteral("A Book");
    QVERIFY(HelpBook::registerBook(title, folder.path()));
    QCOMPARE(HelpBook::openPage(title, QStringLiteral("missing.html")), nullptr);
    QCOMPARE(helpWindow(), nullptr);

    QPointer<QWidget> window = HelpBook::openPage(title, QStringLiteral("index.html"));
    QVERIFY(window);
    QCOMPARE(window->objectName(), QStringLiteral("helpWindow"));
    QCOMPARE(window->windowTitle(), title);
    QVERIFY(window->isVisible());
    auto* browser = window->findChild<QTextBrowser*>();
    auto* back = window->findChild<QToolButton*>(QStringLiteral("helpBack"));
    auto* forward = window->findChild<QToolButton*>(QStringLiteral("helpForward"));
    QVERIFY(browser && back && forward);
    QVERIFY(browser->toPlainText().startsWith(QStringLiteral("Contents")));
    QVERIFY(!back->isEnabled());

    QCOMPARE(HelpBook::openPage(title, QStringLiteral("next.html")), window.data());
    QCOMPARE(browser->toPlainText(), QStringLiteral("Second page"));
    back->click();
    QVERIFY(browser->toPlainText().startsWith(QStringLiteral("Contents")));
    QVERIFY(forward->isEnabled());
    forward->click();
    QCOMPARE(browser->toPlainText(), QStringLiteral("Second page"));

    window->close();
    QTRY_VERIFY(window.isNull());
    QWidget* again = HelpBook::openPage(title, QStringLiteral("index.html"));
    QVERIFY(again);
    delete again;
  }

  void theApplicationsOwnHelpBookOpens() {
    const QString title = QStringLiteral("Skarn Help");
    QVERIFY(HelpBook::registerBook(title, Bundle::mainBundle().resourcePath(QStringLiteral("help"))));
    QWidget* window = HelpBook::openPage(title, QStringLiteral("index.html"));
    QVERIFY(window);
    QVERIFY(!window->findChild<QTextBrowser*>()->toPlainText().isEmpty());
    delete window;
  }
};

SKARN_QTEST(HelpBookTest)
#include "HelpBook_test.moc"
