// The application's resources, texts, pictures and help, against the real resources and against folders of the test's
// own.
#include "platform/Bundle.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>

#include "model/SettingsKeys.h"
#include "platform/HelpBook.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "support/QtTests.h"

using namespace skarn;
using vorn::PropertyList;

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

class PlatformTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void theBundleKnowsItsVersion() {
    const QStringList parts = Bundle::mainBundle().version().split(QLatin1Char('.'));
    QCOMPARE(parts.size(), 3);
    for (const QString& part : parts) {
      bool isNumber = false;
      part.toUInt(&isNumber);
      QVERIFY2(isNumber, qPrintable(part));
    }
  }

  void resourcesLieInTheBundlesFolder() {
    const Bundle bundle(QStringLiteral("/somewhere"));
    QCOMPARE(bundle.resourcePath(QStringLiteral("Skarn.plist")), QStringLiteral("/somewhere/Skarn.plist"));
    QCOMPARE(bundle.imagePath(QStringLiteral("usb.png")), QStringLiteral("/somewhere/images/usb.png"));
  }

  void theEnvironmentNamesTheBundlesFolder() {
    QCOMPARE(Bundle::mainBundle().path(), qEnvironmentVariable("SKARN_SHARE_DIR"));
    QVERIFY(QFile::exists(Bundle::mainBundle().resourcePath(QStringLiteral("Skarn.plist"))));
  }

  void aKeyGivesItsText() {
    QCOMPARE(localized("lkeyOK"), QStringLiteral("OK"));
    QCOMPARE(localized("lkeyNoMouseConnected"), QStringLiteral("No mouse connected"));
  }

  void aKeyWithoutATextGivesNoTranslation() {
    QCOMPARE(localized("lkeyThatNobodyWrote"), QStringLiteral("No Translation"));
    QCOMPARE(localized(""), QStringLiteral("No Translation"));
  }

  void anUnknownLanguageFallsBackOnEnglish() {
    QVERIFY(installTranslations(QStringLiteral("xx")));
    QCOMPARE(localized("lkeyOK"), QStringLiteral("OK"));
    QVERIFY(installTranslations(QStringLiteral("../../../etc/passwd")));
    QCOMPARE(localized("lkeyCancel"), QStringLiteral("Cancel"));
  }

  void everyKeymapPictureHasItsExactName() {
    const QDir images(Bundle::mainBundle().resourcePath(QStringLiteral("images")));
    const QStringList present = images.entryList(QDir::Files);
    for (int number = 1; number <= 8; ++number) {
      const QString name = QStringLiteral("%1karn_keymap%2.png").arg(QLatin1Char(number == 8 ? 'S' : 's')).arg(number);
      QVERIFY2(present.contains(name), qPrintable(name));
      QVERIFY2(!image(name).isNull(), qPrintable(name));
    }
    QVERIFY(!present.contains(QStringLiteral("skarn_keymap8.png")));
  }

  void aMissingPictureIsEmpty() {
    QVERIFY(image(QStringLiteral("nothing.png")).isNull());
    QVERIFY(tintedImage(QStringLiteral("nothing.png"), Qt::red).isNull());
    QVERIFY(tintedIcon(QStringLiteral("nothing.png"), Qt::red).isNull());
  }

  void aTintedPictureHasTheColourAndKeepsItsShape() {
    const QString name = QStringLiteral("usb.png");
    const QImage mask = image(name).toImage().convertToFormat(QImage::Format_ARGB32);
    const QImage tinted = tintedImage(name, QColor(10, 200, 30)).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(tinted.size(), mask.size());
    bool hasInk = false;
    for (int y = 0; y < mask.height(); ++y) {
      for (int x = 0; x < mask.width(); ++x) {
        QCOMPARE(qAlpha(tinted.pixel(x, y)), qAlpha(mask.pixel(x, y)));
        if (qAlpha(mask.pixel(x, y)) != 255) continue;
        hasInk = true;
        QCOMPARE(QColor(tinted.pixel(x, y)), QColor(10, 200, 30));
      }
    }
    QVERIFY(hasInk);
    const QIcon icon = tintedIcon(name, Qt::black);
    QCOMPARE(icon.availableSizes().isEmpty(), false);
  }

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

  void settingsOfAnotherTypeShowNothing() {
    const PropertyList settings = PropertyList::dictionary({{vorn::keys::ProfileName, "Work"},
                                                            {vorn::keys::DPIX, 800},
                                                            {vorn::keys::DPIY, "800"},
                                                            {vorn::keys::LEDColors, 3}});
    QCOMPARE(textOf(settings, vorn::keys::ProfileName), QStringLiteral("Work"));
    QCOMPARE(textOf(settings, vorn::keys::DPIX), QString());
    QCOMPARE(textOf(PropertyList("text"), vorn::keys::DPIX), QString());
    QCOMPARE(numberOf(settings, vorn::keys::DPIX), std::optional<std::int32_t>(800));
    QCOMPARE(numberOf(settings, vorn::keys::DPIY), std::optional<std::int32_t>());
    QCOMPARE(numberOf(PropertyList(), vorn::keys::DPIX), std::optional<std::int32_t>());
  }

  void aFlagThatIsNotThereShowsNothing() {
    QCOMPARE(onOffText(std::nullopt), QString());
    QCOMPARE(onOffText(0), QStringLiteral("Off"));
    QCOMPARE(onOffText(7), QStringLiteral("On"));
  }
};

SKARN_QTEST(PlatformTest)
#include "Bundle_test.moc"
