// How long the Buttons tab takes to show new settings, with five profiles and without or with 1,000 macros, every
// control playing one of them where there are any. Run it with QT_QPA_PLATFORM=offscreen.
#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <vector>

#include "buttons/MouseButtonController.h"
#include "platform/Localization.h"
#include "support/SampleSettings.h"

namespace {

using namespace skarn;
using namespace skarn::test;

PropertyList manyMacros(int count) {
  std::vector<PropertyList> all;
  for (int number = 0; number < count; ++number) all.push_back(macro("Macro " + std::to_string(number), {}));
  return PropertyList::array(std::move(all));
}

PropertyList playingMacros(const PropertyList& profile, int count) {
  PropertyList changed = profile;
  for (const ControlDescriptor& control : controlTable) {
    if (count == 0) break;
    const PropertyList record = assignment(10, control.number * 37 % count, 1);
    changed = changed.with(control.group, changed[control.group].with(control.identifier, record));
  }
  return changed;
}

double medianRebuild(int macroCount, int rounds) {
  MouseButtonController tab;
  const PropertyList active = playingMacros(profile("Work"), macroCount);
  tab.setMAllProfiles(profiles().replacing(1, active).appending(profile("Fifth")));
  tab.setMAllMacros(manyMacros(macroCount));
  tab.setMDeviceSettingsDict(deviceSettings());
  tab.setMDefaultDict(defaultSettings());
  tab.setMButtonsSettingsDict(active);
  tab.resize(1180, 560);
  tab.show();
  std::vector<double> milliseconds;
  for (int round = 0; round < rounds; ++round) {
    QElapsedTimer clock;
    clock.start();
    tab.updateUISettings();
    milliseconds.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    // Painting and what was put off are no part of the rebuild.
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  const auto middle = milliseconds.begin() + rounds / 2;
  std::nth_element(milliseconds.begin(), middle, milliseconds.end());
  return *middle;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (!installTranslations(QStringLiteral("en"))) return EXIT_FAILURE;
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 101;
  std::cout << "rebuild of the Buttons tab, median of " << rounds << "\n"
            << "  no macros     " << medianRebuild(0, rounds) << " ms (budget 10)\n"
            << "  1,000 macros  " << medianRebuild(1000, rounds) << " ms (budget 20)\n";
  return EXIT_SUCCESS;
}
