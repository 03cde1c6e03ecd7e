// The application's text table. Texts are found by keys that begin with "lkey". Main thread.
#pragma once

#include <QString>

namespace skarn {

// The text of a key in the language in use; "No Translation" when the table lacks it.
QString localized(const char* key);

// Loads translations/LANGUAGE.qm of the main bundle ("de", "de_CH"; a country's table falls back on its language's),
// with the English table under it for keys that it lacks. Replaces what an earlier call loaded. False when even the
// English table cannot be read. Widgets made earlier keep their texts.
bool installTranslations(const QString& language);

}  // namespace skarn
