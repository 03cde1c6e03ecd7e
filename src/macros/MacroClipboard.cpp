#include "macros/MacroClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <algorithm>
#include <memory>

#include "model/MacroEvents.h"
#include "model/PropertyListCodec.h"
#include "model/RecordLimits.h"
#include "model/eventParser.h"

namespace skarn::macroClipboard {

using vorn::PropertyList;

namespace {

QString linesOf(const PropertyList& events) {
  QString text;
  const PropertyList lines = vorn::eventParser::getMessagesArray(events);
  for (const PropertyList& line : lines.elements()) {
    text += QString::fromStdString(line.toString());
    if (!text.endsWith(QLatin1Char('\n'))) text += QLatin1Char('\n');
  }
  return text;
}

}  // namespace

void put(const vorn::MacroEventList& events) {
  const PropertyList list = PropertyList::array(events);
  const auto bytes = vorn::encodeBinaryPropertyList(list);
  if (!bytes) return;
  auto data = std::make_unique<QMimeData>();
  data->setData(QLatin1String(mimeType),
                QByteArray(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size())));
  data->setText(linesOf(list));
  QGuiApplication::clipboard()->setMimeData(data.release());
}

Held held() {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  if (data == nullptr) return Held::Nothing;
  const QStringList formats = data->formats();
  if (formats.contains(QLatin1String(mimeType))) return Held::Events;
  return formats.contains(QLatin1String("text/plain")) ? Held::Text : Held::Nothing;
}

std::optional<vorn::MacroEventList> events() {
  if (held() != Held::Events) return std::nullopt;
  const QByteArray data = QGuiApplication::clipboard()->mimeData()->data(QLatin1String(mimeType));
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(data.constData());
  const auto list = vorn::decodeBinaryPropertyList({bytes, static_cast<std::size_t>(data.size())});
  if (!list || !vorn::isWithinRecordLimits(list.value())) return std::nullopt;
  const auto all = list.value().elements();
  if (all.empty() || !std::ranges::all_of(all, vorn::isMacroEvent)) return std::nullopt;
  return vorn::MacroEventList(all.begin(), all.end());
}

QString foreignText() {
  return held() == Held::Text ? QGuiApplication::clipboard()->text() : QString();
}

}  // namespace skarn::macroClipboard
