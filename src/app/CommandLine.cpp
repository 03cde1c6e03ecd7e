#include "app/CommandLine.h"

namespace skarn {

const QStringList& tabNames() {
  static const QStringList names{"buttons", "profiles", "macros", "performance", "lighting", "maintenance"};
  return names;
}

QString CommandLine::help() {
  return QStringLiteral(
      "Usage: skarn-configurator [OPTION]...\n"
      "Configure the mouse: buttons, profiles, macros, performance, lighting and maintenance.\n"
      "\n"
      "  --launch-in-background   started at login: wait for the core engine as long as it takes\n"
      "  --no-launch-key          start without saying how the program was launched\n"
      "  --appearance WHICH       desktop (the default), light or dark\n"
      "  --tab NAME               show buttons, profiles, macros, performance, lighting or maintenance first\n"
      "  --picture FILE           save a picture of the window when it has started, and end\n"
      "  --verbose                write every request and answer to standard error\n"
      "  --help                   show this text\n"
      "  --version                show the version\n"
      "\n"
      "Options of Qt, such as -platform, are understood too.\n");
}

CommandLine CommandLine::parse(const QStringList& arguments) {
  CommandLine line;
  QStringList rest = arguments;
  const auto complain = [&line](const QString& problem) {
    if (line.error.isEmpty()) line.error = problem;
  };
  const auto takeValue = [&](const QString& option, const QString& given) -> std::optional<QString> {
    if (given.startsWith(option + u'=')) return given.mid(option.size() + 1);
    if (given != option) return std::nullopt;
    if (rest.isEmpty()) {
      complain(QStringLiteral("option %1 needs a value").arg(option));
      return QString();
    }
    return rest.takeFirst();
  };
  while (!rest.isEmpty()) {
    const QString argument = rest.takeFirst();
    if (argument == QLatin1String("--launch-in-background")) {
      line.launch.isDefaultLaunch = false;
    } else if (argument == QLatin1String("--no-launch-key")) {
      line.launch.isDefaultLaunch = std::nullopt;
    } else if (argument == QLatin1String("--verbose")) {
      line.isVerbose = true;
    } else if (argument == QLatin1String("--help")) {
      line.wantsHelp = true;
    } else if (argument == QLatin1String("--version")) {
      line.wantsVersion = true;
    } else if (const auto picture = takeValue(QStringLiteral("--picture"), argument)) {
      line.picture = *picture;
    } else if (const auto tab = takeValue(QStringLiteral("--tab"), argument)) {
      line.tab = *tab;
      if (!tabNames().contains(*tab)) complain(QStringLiteral("no tab is named %1").arg(*tab));
    } else if (const auto appearance = takeValue(QStringLiteral("--appearance"), argument)) {
      static const QStringList names{"desktop", "light", "dark"};
      const auto index = names.indexOf(*appearance);
      if (index >= 0) line.appearance = static_cast<Appearance>(index);
      if (index < 0) complain(QStringLiteral("no appearance is named %1").arg(*appearance));
    } else if (argument == QLatin1String("-platform") || argument == QLatin1String("--platform")) {
      line.namesPlatform = true;
      if (!rest.isEmpty()) rest.removeFirst();
    } else {
      complain(QStringLiteral("unknown argument %1").arg(argument));
    }
  }
  return line;
}

}  // namespace skarn
