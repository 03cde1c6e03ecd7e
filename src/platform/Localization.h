// The application's text table. Texts are found by keys that begin with "lkey". Main thread.
#pragma once

#include <QLibraryInfo>
#include <QString>

namespace skarn {

// The text of a key in the language in use; "No Translation" when the table lacks it.
QString localized(const char* key);

// Loads translations/LANGUAGE.qm of the main bundle ("de", "de_CH"; a country's table falls back on its language's),
// with the English table under it for keys that it lacks and "No Translation" under that, for texts of layouts too.
// For another language than English also the toolkit's table qtbase_LANGUAGE.qm of its folder, where there is one: its
// dialogs speak the language then. Replaces what an earlier call loaded. False when even the English table cannot be
// read. Widgets made earlier keep their texts.
bool installTranslations(const QString& language,
                         const QString& toolkitFolder = QLibraryInfo::path(QLibraryInfo::TranslationsPath));

}  // namespace skarn
