#include "platform/Localization.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>
#include <memory>

#include "platform/Bundle.h"

namespace skarn {

namespace {

constexpr const char* baseLanguage = "en";

QString noTranslation() {
  return QStringLiteral("No Translation");
}

// Asked last, so that a layout's text that no table has reads like one of the code's. Texts without a context are ours;
// the toolkit's own have one.
class LastTable : public QTranslator {
 public:
  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char*, const char*, int) const override {
    return context == nullptr || *context == '\0' ? noTranslation() : QString();
  }
};

// In the order in which they are installed: the table installed last is asked first. A table takes itself out of the
// application when it goes.
std::unique_ptr<QTranslator> lastTable;
std::unique_ptr<QTranslator> toolkitTable;
std::unique_ptr<QTranslator> baseTable;
std::unique_ptr<QTranslator> languageTable;

std::unique_ptr<QTranslator> install(std::unique_ptr<QTranslator> table, bool isLoaded) {
  if (!isLoaded) return nullptr;
  QCoreApplication::installTranslator(table.get());
  return table;
}

std::unique_ptr<QTranslator> installOwn(const QString& language) {
  auto table = std::make_unique<QTranslator>();
  const bool isLoaded = table->load(language, Bundle::mainBundle().resourcePath(QStringLiteral("translations")));
  return install(std::move(table), isLoaded);
}

std::unique_ptr<QTranslator> installToolkits(const QString& language, const QString& folder) {
  auto table = std::make_unique<QTranslator>();
  const bool isLoaded = table->load(QLocale(language), QStringLiteral("qtbase"), QStringLiteral("_"), folder);
  return install(std::move(table), isLoaded);
}

}  // namespace

QString localized(const char* key) {
  QString text = qtTrId(key);
  // Without any table, a key comes back as it is.
  return text == QLatin1String(key) ? noTranslation() : text;
}

bool installTranslations(const QString& language, const QString& toolkitFolder) {
  languageTable.reset();
  baseTable.reset();
  toolkitTable.reset();
  lastTable = install(std::make_unique<LastTable>(), true);
  const bool isBase = language == QLatin1String(baseLanguage) || language.startsWith(QLatin1String("en_"));
  if (!isBase) toolkitTable = installToolkits(language, toolkitFolder);
  baseTable = installOwn(QLatin1String(baseLanguage));
  if (!isBase) languageTable = installOwn(language);
  return baseTable != nullptr;
}

}  // namespace skarn
