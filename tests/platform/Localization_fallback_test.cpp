// What is shown for a text that no table has, in code and in layouts, and the table of the toolkit's own dialogs.
#include <QDialogButtonBox>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;

namespace {

const QString noTranslation = QStringLiteral("No Translation");

// The toolkit's table of a language that exists here only.
bool makeToolkitTable(const QString& folder) {
  const QString source = folder + QStringLiteral("/qtbase_de.ts");
  QFile file(source);
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write(R"(<?xml version="1.0" encoding="utf-8"?><!DOCTYPE TS><TS version="2.1" language="de"><context>
<name>QPlatformTheme</name><message><source>Cancel</source><translation>Abbrechen</translation></message>
</context></TS>)");
  file.close();
  return QProcess::execute(QStringLiteral(LRELEASE), {QStringLiteral("-silent"), source}) == 0;
}

QString cancelOfTheToolkit() {
  const QDialogButtonBox box(QDialogButtonBox::Cancel);
  return box.button(QDialogButtonBox::Cancel)->text();
}

}  // namespace

class LocalizationFallbackTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() { QVERIFY(installTranslations(QStringLiteral("en"))); }

  void aTextOfALayoutThatNoTableHasReadsLikeOneOfTheCode_data() {
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << QStringLiteral("en");
    QTest::newRow("a language without a table") << QStringLiteral("xx");
  }
  void aTextOfALayoutThatNoTableHasReadsLikeOneOfTheCode() {
    QFETCH(QString, language);
    QVERIFY(installTranslations(language));
    // What a compiled layout calls.
    QCOMPARE(qtTrId("lkeyThatNobodyWrote"), noTranslation);
    QCOMPARE(localized("lkeyThatNobodyWrote"), noTranslation);
    QCOMPARE(qtTrId("lkeyCancel"), QStringLiteral("Cancel"));
  }

  void textsWithAContextStayThoseOfTheToolkit() {
    QVERIFY(installTranslations(QStringLiteral("en")));
    QCOMPARE(QCoreApplication::translate("QFileDialog", "Something new"), QStringLiteral("Something new"));
  }

  void theToolkitsDialogsSpeakTheLanguageWhereItHasATable() {
    const QTemporaryDir folder;
    QVERIFY(makeToolkitTable(folder.path()));
    QVERIFY(installTranslations(QStringLiteral("de_CH"), folder.path()));
    QCOMPARE(cancelOfTheToolkit(), QStringLiteral("Abbrechen"));
    QVERIFY(installTranslations(QStringLiteral("fr"), folder.path()));
    QCOMPARE(cancelOfTheToolkit(), QStringLiteral("Cancel"));
    QVERIFY(installTranslations(QStringLiteral("en_GB"), folder.path()));
    QCOMPARE(cancelOfTheToolkit(), QStringLiteral("Cancel"));
  }
};

SKARN_QTEST(LocalizationFallbackTest)
#include "Localization_fallback_test.moc"
