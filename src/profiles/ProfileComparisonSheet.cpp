#include "profiles/ProfileComparisonSheet.h"

#include <QPushButton>
#include <QSignalBlocker>
#include <optional>

#include "model/SettingsKeys.h"
#include "platform/GoneAlert.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "platform/ShownName.h"
#include "profiles/ComparisonWords.h"
#include "ui_ProfileComparisonSheet.h"
#include "widgets/SheetFlags.h"

namespace skarn {

using vorn::PropertyList;
namespace keys = vorn::keys;

namespace {

QString nameIn(const PropertyList& profiles, int row) {
  return textOf(profiles.at(row), keys::ProfileName);
}

int otherThan(int row, int activeProfile) {
  if (activeProfile >= 0 && activeProfile != row) return activeProfile;
  return row == 0 ? 1 : row - 1;
}

}  // namespace

ProfileComparisonSheet* ProfileComparisonSheet::open(QWidget* window, const PropertyList& bundle, int row,
                                                     int activeProfile) {
  auto* sheet = new ProfileComparisonSheet(window, bundle, row, otherThan(row, activeProfile));
  sheet->QDialog::open();
  return sheet;
}

ProfileComparisonSheet::ProfileComparisonSheet(QWidget* window, const PropertyList& bundle, int row, int other)
    : QDialog(window, sheetFlags),
      mUi(std::make_unique<Ui::ProfileComparisonSheet>()),
      mBundle(bundle),
      mProfile(bundle[keys::Profiles], row, keys::ProfileName),
      mOther(bundle[keys::Profiles], other, keys::ProfileName) {
  mUi->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  connect(mUi->mComparedProfile, &QComboBox::activated, this, [this](int index) {
    const int chosen = mUi->mComparedProfile->itemData(index).toInt();
    mOther = vorn::RememberedRecord(mBundle[keys::Profiles], chosen, keys::ProfileName);
    compare();
  });
  connect(mUi->mComparisonClose, &QPushButton::clicked, this, &QDialog::reject);
  showProfiles(row, other);
  mUi->mComparedProfile->setFocus();
}

ProfileComparisonSheet::~ProfileComparisonSheet() = default;

void ProfileComparisonSheet::setSettings(const PropertyList& bundle) {
  // One that has closed is still there for a moment, and has told why.
  if (!isVisible()) return;
  mBundle = bundle;
  const PropertyList& profiles = bundle[keys::Profiles];
  const auto row = mProfile.placeIn(profiles);
  if (!row || profiles.size() < 2) {
    const QString name = QString::fromStdString(mProfile.name());
    QWidget* window = parentWidget();
    reject();
    showGoneAlert(window, name);
    return;
  }
  const int place = static_cast<int>(*row);
  const auto other = mOther.placeIn(profiles);
  const int otherPlace = other && *other != *row ? static_cast<int>(*other) : otherThan(place, -1);
  mProfile = vorn::RememberedRecord(profiles, place, keys::ProfileName);
  mOther = vorn::RememberedRecord(profiles, otherPlace, keys::ProfileName);
  showProfiles(place, otherPlace);
}

void ProfileComparisonSheet::showProfiles(int row, int other) {
  mRow = row;
  const PropertyList& profiles = mBundle[keys::Profiles];
  mUi->mComparisonTitle->setText(localized("lkeyCompareHeading").arg(shownName(nameIn(profiles, row))));
  QComboBox* choice = mUi->mComparedProfile;
  const QSignalBlocker blocker(choice);
  choice->clear();
  for (int each = 0; each < static_cast<int>(profiles.size()); ++each) {
    if (each != row) choice->addItem(shownName(nameIn(profiles, each)), each);
  }
  choice->setCurrentIndex(choice->findData(other));
  compare();
}

void ProfileComparisonSheet::compare() {
  const PropertyList& profiles = mBundle[keys::Profiles];
  const int other = mUi->mComparedProfile->currentData().toInt();
  const auto differences = vorn::profileDifferences(profiles.at(mRow), profiles.at(other));
  mUi->mComparisonList->begin({localized("lkeyComparedWhat"), nameIn(profiles, mRow), nameIn(profiles, other)});
  std::optional<vorn::ProfilePart> group;
  for (const vorn::ProfileDifference& difference : differences) {
    if (group != difference.part) mUi->mComparisonList->addGroup(partWords(difference.part));
    group = difference.part;
    const ComparisonWords words = comparisonWords(difference, mBundle);
    mUi->mComparisonList->addRow({words.title, words.left, words.right});
  }
  mUi->mComparisonPages->setCurrentWidget(differences.empty() ? mUi->mNoDifferencePage : mUi->mComparisonPage);
}

}  // namespace skarn
