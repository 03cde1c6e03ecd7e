#include "buttons/ControlOutlines.h"

#include <QFile>
#include <QXmlStreamReader>
#include <algorithm>
#include <optional>
#include <vector>

#include "platform/Bundle.h"

namespace skarn {

namespace {

// Reads "M1 2 L3 4 C5 6 7 8 9 10 Z"; nothing where it is anything else.
class PathData {
 public:
  explicit PathData(QStringView text) : mRest(text) {}

  std::optional<QPainterPath> path() {
    QPainterPath path;
    for (skipSeparators(); !mRest.isEmpty(); skipSeparators()) {
      const QChar command = mRest.front();
      mRest = mRest.mid(1);
      if (!append(path, command)) return std::nullopt;
    }
    return path;
  }

 private:
  bool append(QPainterPath& path, QChar command) {
    const std::size_t points = command == QLatin1Char('C') ? 3 : 1;
    if (command == QLatin1Char('Z')) {
      path.closeSubpath();
      return true;
    }
    std::vector<QPointF> at;
    while (at.size() < points) {
      const std::optional<qreal> x = number();
      const std::optional<qreal> y = number();
      if (!x || !y) return false;
      at.emplace_back(*x, *y);
    }
    if (command == QLatin1Char('M')) {
      path.moveTo(at[0]);
    } else if (command == QLatin1Char('L')) {
      path.lineTo(at[0]);
    } else if (command == QLatin1Char('C')) {
      path.cubicTo(at[0], at[1], at[2]);
    } else {
      return false;
    }
    return true;
  }

  void skipSeparators() {
    while (!mRest.isEmpty() && (mRest.front().isSpace() || mRest.front() == QLatin1Char(','))) mRest = mRest.mid(1);
  }

  std::optional<qreal> number() {
    skipSeparators();
    const auto isDigit = [](QChar sign) {
      return sign.isDigit() || sign == QLatin1Char('.') || sign == QLatin1Char('-') || sign == QLatin1Char('+');
    };
    const auto end = std::find_if_not(mRest.begin(), mRest.end(), isDigit);
    const QStringView digits = mRest.first(end - mRest.begin());
    mRest = mRest.mid(digits.size());
    bool isNumber = false;
    const qreal value = digits.toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
  }

  QStringView mRest;
};

std::size_t indexOfField(QStringView name) {
  const auto found = std::find_if(controlTable.begin(), controlTable.end(), [name](const ControlDescriptor& control) {
    return name == QLatin1String(control.fieldName);
  });
  return static_cast<std::size_t>(found - controlTable.begin());
}

}  // namespace

const ControlDescriptor* ControlOutlines::controlAt(const QPointF& position) const {
  for (std::size_t index = 0; index < paths.size(); ++index) {
    if (paths[index].contains(position)) return &controlTable[index];
  }
  return nullptr;
}

const QPainterPath& ControlOutlines::of(const ControlDescriptor& control) const {
  return paths[static_cast<std::size_t>(control.number - 1)];
}

ControlOutlines readControlOutlines(QIODevice& drawing) {
  ControlOutlines outlines;
  std::size_t current = controlTable.size();
  QXmlStreamReader reader(&drawing);
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement) continue;
    const QXmlStreamAttributes attributes = reader.attributes();
    if (reader.name() == QLatin1String("svg")) {
      outlines.drawing = {attributes.value(QLatin1String("width")).toDouble(),
                          attributes.value(QLatin1String("height")).toDouble()};
    } else if (reader.name() == QLatin1String("g")) {
      current = indexOfField(attributes.value(QLatin1String("id")));
    } else if (reader.name() == QLatin1String("path") && current < controlTable.size()) {
      if (const auto path = PathData(attributes.value(QLatin1String("d"))).path()) outlines.paths[current] = *path;
      current = controlTable.size();
    }
  }
  return outlines;
}

const ControlOutlines& controlOutlines() {
  static const ControlOutlines outlines = [] {
    QFile file(Bundle::mainBundle().imagePath(QStringLiteral("mouse.svg")));
    return file.open(QIODevice::ReadOnly) ? readControlOutlines(file) : ControlOutlines();
  }();
  return outlines;
}

}  // namespace skarn
