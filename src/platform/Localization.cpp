#include "platform/Localization.h"

#include <QCoreApplication>
#include <QTranslator>
#include <memory>

#include "platform/Bundle.h"

namespace skarn {

namespace {

constexpr const char* baseLanguage = "en";

// The base language's table and that of the language in use. A table takes itself out of the application when it goes.
std::unique_ptr<QTranslator> baseTable;
std::unique_ptr<QTranslator> languageTable;

std::unique_ptr<QTranslator> install(const QString& language) {
  auto table = std::make_unique<QTranslator>();
  if (!table->load(language, Bundle::mainBundle().resourcePath(QStringLiteral("translations")))) return nullptr;
  QCoreApplication::installTranslator(table.get());
  return table;
}

}  // namespace

QString localized(const char* key) {
  QString text = qtTrId(key);
  // A key without a text comes back as it is.
  if (text == QLatin1String(key)) return QStringLiteral("No Translation");
  return text;
}

bool installTranslations(const QString& language) {
  // The table installed last is asked first.
  languageTable.reset();
  baseTable = install(QLatin1String(baseLanguage));
  const bool isBase = language == QLatin1String(baseLanguage) || language.startsWith(QLatin1String("en_"));
  if (!isBase) languageTable = install(language);
  return baseTable != nullptr;
}

}  // namespace skarn
