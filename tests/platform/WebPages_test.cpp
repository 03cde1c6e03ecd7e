#include "platform/WebPages.h"

#include <QLabel>
#include <QMessageBox>
#include <QTest>

#include "platform/Localization.h"
#include "support/PanelTest.h"
#include "support/QtTests.h"

using namespace skarn;
using namespace skarn::test;

class WebPagesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void theAddressesAreThoseOfTheBuild() {
    QCOMPARE(addressOf(WebPage::Community), QUrl(QStringLiteral(SKARN_COMMUNITY_PAGE)));
    QCOMPARE(addressOf(WebPage::News), QUrl(QStringLiteral(SKARN_NEWS_PAGE)));
    QCOMPARE(addressOf(WebPage::Guild), QUrl(QStringLiteral(SKARN_GUILD_PAGE)));
    QCOMPARE(addressOf(WebPage::Support), QUrl(QStringLiteral(SKARN_SUPPORT_PAGE)));
  }

  void aPageIsOpenedOnce() {
    QWidget window;
    QList<QUrl> opened;
    openPage(&window, WebPage::Support, [&](const QUrl& address) {
      opened << address;
      return true;
    });
    openPage(&window, WebPage::Support, {});
    QCOMPARE(opened, QList<QUrl>{addressOf(WebPage::Support)});
    QVERIFY(alertOf(window) == nullptr);
  }

  void theAddressOfAPageThatCannotBeOpenedIsCopiedFromTheAlert() {
    QWidget window;
    window.show();
    openPage(&window, WebPage::Guild, [](const QUrl&) { return false; });
    const QString address = addressOf(WebPage::Guild).toString();
    QCOMPARE(alertTexts(window).value(0), QStringLiteral("The page could not be opened"));
    QVERIFY(alertTexts(window).value(1).endsWith(address));
    QLabel* text = nullptr;
    for (QLabel* label : alertOf(window)->findChildren<QLabel*>()) {
      if (label->text() == alertTexts(window).value(1)) text = label;
    }
    QVERIFY(text != nullptr);
    QVERIFY(text->textInteractionFlags() & Qt::TextSelectableByMouse);
    QVERIFY(text->textInteractionFlags() & Qt::TextSelectableByKeyboard);
    text->setSelection(static_cast<int>(text->text().size() - address.size()), static_cast<int>(address.size()));
    QCOMPARE(text->selectedText(), address);
    // Return still presses the button.
    QTest::keyClick(alertOf(window), Qt::Key_Return);
    QTRY_VERIFY(alertOf(window) == nullptr);
  }
};

SKARN_QTEST(WebPagesTest)
#include "WebPages_test.moc"
