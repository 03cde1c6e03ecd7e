// The configurator's command line.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "app/Vorn_ConfiguratorAppDelegate.h"

namespace skarn {

struct CommandLine {
  enum class Appearance { Desktop, Light, Dark };

  LaunchInformation launch;
  bool isVerbose = false;
  bool wantsHelp = false;
  bool wantsVersion = false;
  Appearance appearance = Appearance::Desktop;
  QString picture;             // file for a picture of the started window; the program ends after it
  QString tab;                 // tab to show first; empty for the first one
  bool namesPlatform = false;  // the option of Qt that names a display
  QString error;               // what is first wrong with the arguments; empty when they are good

  // arguments: without the program's name. What is asked for behind a wrong argument counts too, so that help and
  // version are also found among options that are Qt's and not yet taken out.
  static CommandLine parse(const QStringList& arguments);
  static QString help();
};

// Names of the tabs on the command line, in the order of the window.
const QStringList& tabNames();

}  // namespace skarn
