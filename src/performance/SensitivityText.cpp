#include "performance/SensitivityText.h"

#include "model/SettingsKeys.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"

namespace skarn {

namespace keys = vorn::keys;

namespace {

bool isIndependent(const vorn::PropertyList& stage) {
  return numberOf(stage, keys::StageIndependentXY).value_or(0) != 0;
}

}  // namespace

QString sensitivityText(std::optional<int> x, std::optional<int> y, bool isIndependent) {
  if (!x || (isIndependent && !y)) return {};
  const QString dpi = localized("lkeyDPI");
  if (!isIndependent) return QStringLiteral("%1 %2").arg(QString::number(*x), dpi);
  return QStringLiteral("%1 = %2, %3 = %4 %5")
      .arg(localized("lkeyX"), QString::number(*x), localized("lkeyY"), QString::number(*y), dpi);
}

QString pendingAxesText(int x) {
  return QStringLiteral("%1=%2 %1=%2 %3").arg(localized("lkeyX"), QString::number(x), localized("lkeyDPI"));
}

QString stageText(const vorn::PropertyList& stage) {
  return sensitivityText(numberOf(stage, keys::StageDpiX), numberOf(stage, keys::StageDpiY), isIndependent(stage));
}

QString stageChipText(const vorn::PropertyList& stage) {
  const std::optional<int> x = numberOf(stage, keys::StageDpiX);
  const std::optional<int> y = numberOf(stage, keys::StageDpiY);
  if (!x || (isIndependent(stage) && !y)) return {};
  const bool isDifferent = isIndependent(stage) && x != y;
  return isDifferent ? QStringLiteral("%1 × %2").arg(*x).arg(*y) : QString::number(*x);
}

bool hasSensitivity(const vorn::PropertyList& stage, int x, int y, bool areApart) {
  const std::optional<int> stageX = numberOf(stage, keys::StageDpiX);
  const std::optional<int> stageY = isIndependent(stage) ? numberOf(stage, keys::StageDpiY) : stageX;
  return stageX == x && stageY == (areApart ? y : x);
}

}  // namespace skarn
