// Searching in a help book, in the real help window.
#include "platform/HelpPages.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>

#include "platform/Bundle.h"
#include "platform/HelpBook.h"
#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;

namespace {

QStringList pagesOf(const std::vector<HelpHit>& hits) {
  QStringList pages;
  for (const HelpHit& hit : hits) pages << hit.page;
  return pages;
}

}  // namespace

class HelpPagesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void init() {
    write("index.html", "<title>The Book</title><h1>The Book</h1><p>Wheel and keys.</p>");
    write("wheel.html", "<title>The wheel</title><h1>The wheel</h1><p>It turns.</p>");
    write("keys.html",
          "<title>Keys</title><p>A wheel, another Wheel, and <b>a third</b>\n wheel &amp; more: "
          "<a href='x'>Modifiers</a>.</p>");
    write("other.txt", "wheel");
    QVERIFY(HelpBook::registerBook(title, mFolder.path()));
  }
  void cleanup() {
    delete mWindow.data();
    QCOMPARE(QDir(mFolder.path()).removeRecursively(), true);
    QVERIFY(QDir().mkpath(mFolder.path()));
  }

  void aPageWithTheWordInItsTitleComesFirstThenTheOneWithMoreMatches() {
    HelpPages pages(mFolder.path());
    QCOMPARE(pagesOf(pages.search(QStringLiteral("WHEEL"))), QStringList({"wheel.html", "keys.html", "index.html"}));
  }

  void everyWordMustBeOnThePage() {
    HelpPages pages(mFolder.path());
    QCOMPARE(pagesOf(pages.search(QStringLiteral("wheel  modifiers"))), QStringList({"keys.html"}));
    QCOMPARE(pagesOf(pages.search(QStringLiteral("wheel nowhere"))), QStringList());
  }

  void markupIsNotFoundAndTextIsReadAsItIsShown() {
    HelpPages pages(mFolder.path());
    QCOMPARE(pagesOf(pages.search(QStringLiteral("href"))), QStringList());
    const std::vector<HelpHit> hits = pages.search(QStringLiteral("third wheel"));
    QCOMPARE(pagesOf(hits), QStringList({"keys.html"}));
    QCOMPARE(hits[0].title, QStringLiteral("Keys"));
    QCOMPARE(hits[0].excerpt, QStringLiteral("A wheel, another Wheel, and a third wheel & more: Modifiers."));
  }

  void aLongPageGivesSomeWordsAroundTheMatch() {
    QByteArray words;
    for (int i = 0; i < 200; ++i) words += "filler" + QByteArray::number(i) + " ";
    write("long.html", "<p>" + words + " needle " + words + "</p>");
    HelpPages pages(mFolder.path());
    const std::vector<HelpHit> hits = pages.search(QStringLiteral("needle"));
    QCOMPARE(pagesOf(hits), QStringList({"long.html"}));
    QVERIFY(hits[0].excerpt.contains(QStringLiteral(" needle ")));
    QVERIFY(hits[0].excerpt.startsWith(QStringLiteral("… filler")));
    QVERIFY(hits[0].excerpt.endsWith(QStringLiteral(" …")));
    QVERIFY(hits[0].excerpt.size() < 160);
  }

  void aFolderThatWentFindsNothing() {
    HelpPages pages(QStringLiteral("/no/such/folder"));
    QVERIFY(pages.search(QStringLiteral("wheel")).empty());
    QVERIFY(pages.search(QString()).empty());
  }

  void typedWordsListPagesThatCanBeFollowedAndLeftAgain() {
    open();
    QTest::keyClicks(field(), QStringLiteral("modifiers"));
    QVERIFY2(browser()->toPlainText().contains(QStringLiteral("Keys")), qPrintable(browser()->toPlainText()));
    QVERIFY(!browser()->toPlainText().contains(QStringLiteral("The wheel")));
    // One step back, however many letters were typed.
    mWindow->findChild<QToolButton*>(QStringLiteral("helpBack"))->click();
    QVERIFY(browser()->toPlainText().startsWith(QStringLiteral("The Book")));
    mWindow->findChild<QToolButton*>(QStringLiteral("helpForward"))->click();
    QVERIFY(browser()->toPlainText().contains(QStringLiteral("Keys")));
    QTest::keyClick(field(), Qt::Key_Return);
    QVERIFY(browser()->hasFocus());
    // The first result is the first link.
    QTest::keyClick(browser(), Qt::Key_Tab);
    QTest::keyClick(browser(), Qt::Key_Return);
    QVERIFY(browser()->toPlainText().startsWith(QStringLiteral("A wheel")));
  }

  void wordsThatAreNowhereAreTold() {
    open();
    QTest::keyClicks(field(), QStringLiteral("<b>zebra"));
    QVERIFY(browser()->toPlainText().contains(QStringLiteral("No page has the words “<b>zebra”.")));
  }

  void anEmptiedFieldShowsTheContents() {
    open();
    QTest::keyClicks(field(), QStringLiteral("zebra"));
    field()->selectAll();
    QTest::keyClick(field(), Qt::Key_Backspace);
    QVERIFY(browser()->toPlainText().startsWith(QStringLiteral("The Book")));
  }

  void contentsLeadsToTheFirstPage() {
    open();
    HelpBook::openPage(title, QStringLiteral("wheel.html"));
    QVERIFY(browser()->toPlainText().startsWith(QStringLiteral("The wheel")));
    mWindow->findChild<QToolButton*>(QStringLiteral("helpContents"))->click();
    QVERIFY(browser()->toPlainText().startsWith(QStringLiteral("The Book")));
  }

  void theApplicationsBookIsSearched() {
    HelpPages pages(Bundle::mainBundle().resourcePath(QStringLiteral("help")));
    QCOMPARE(pagesOf(pages.search(QStringLiteral("macros"))).value(0), QStringLiteral("macros.html"));
  }

 private:
  void write(const char* name, const QByteArray& text) {
    QFile file(mFolder.filePath(QLatin1String(name)));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), static_cast<qint64>(text.size()));
  }
  void open() {
    mWindow = HelpBook::openPage(title, QStringLiteral("index.html"));
    QVERIFY(QTest::qWaitForWindowActive(mWindow));
  }
  QTextBrowser* browser() { return mWindow->findChild<QTextBrowser*>(); }
  QLineEdit* field() { return mWindow->findChild<QLineEdit*>(QStringLiteral("helpSearch")); }

  const QString title = QStringLiteral("A Searched Book");
  QTemporaryDir mFolder;
  QPointer<QWidget> mWindow;
};

SKARN_QTEST(HelpPagesTest)
#include "HelpPages_test.moc"
