#include <QApplication>
#include <QDesktopServices>
#include <QLocale>
#include <QScreen>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "app/AfterPaint.h"
#include "app/BusNotifier.h"
#include "app/CommandLine.h"
#include "app/DesktopAppearance.h"
#include "app/MouseMainWindow.h"
#include "app/QuitOnSignals.h"
#include "app/Vorn_ConfiguratorAppDelegate.h"
#include "app/WindowMemory.h"
#include "link/PortEngineLink.h"
#include "platform/Bundle.h"
#include "platform/Localization.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/MessagePort.h"
#include "ports/SingleInstance.h"
#include "protocol/EngineProtocol.h"
#include "ui_MouseMainWindow.h"
#include "widgets/MenuKey.h"

namespace {

using namespace skarn;

constexpr int exitBadArguments = 2;
// So that layouts and sheets have come to rest.
constexpr std::chrono::milliseconds pictureDelay{400};

// One write a line: several threads report.
void report(const std::string& line) {
  std::cerr << "skarn-configurator: " + line + "\n" << std::flush;
}

bool hasDisplay(const CommandLine& line) {
  if (line.namesPlatform) return true;
  for (const char* variable : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"}) {
    if (!qEnvironmentVariableIsEmpty(variable)) return true;
  }
  return false;
}

// Help and version need neither a display nor a bus.
std::optional<int> answerWithoutWindow(const CommandLine& line) {
  if (line.wantsHelp) {
    std::cout << CommandLine::help().toStdString();
    return EXIT_SUCCESS;
  }
  if (line.wantsVersion) {
    std::cout << "skarn-configurator " << SKARN_VERSION << '\n';
    return EXIT_SUCCESS;
  }
  if (hasDisplay(line)) return std::nullopt;
  report("there is no display to show a window on (neither DISPLAY nor WAYLAND_DISPLAY is set)");
  return EXIT_FAILURE;
}

QStringList argumentsOf(int count, char** arguments) {
  QStringList all;
  for (int i = 1; i < count; ++i) all << QString::fromLocal8Bit(arguments[i]);
  return all;
}

// Another configurator runs: it comes to the front, and this one ends.
std::optional<int> handOverToRunningOne(std::unique_ptr<vorn::SingleInstance>& instance, MouseMainWindow*& window) {
  const std::string identifier(vorn::configuratorIdentifier);
  bool isTaken = false;
  instance = vorn::SingleInstance::claim(
      identifier,
      [&window](const std::string& token) {
        if (window == nullptr) return;
        report("another start brings the window to the front");
        window->comeToFront(QString::fromStdString(token));
      },
      &isTaken);
  if (!isTaken && !vorn::RemoteMessagePort::lookUp(vorn::configuratorReplyPortName)) return std::nullopt;
  const std::string token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN").toStdString();
  const bool hasAnswered = isTaken && vorn::SingleInstance::activateOther(identifier, token);
  report(hasAnswered ? "already running; its window comes to the front"
                     : "already running, but it does not answer just now");
  return EXIT_SUCCESS;
}

void trace(const char* direction, std::int32_t messageID, const vorn::PropertyList& body) {
  report(std::string(direction) + " " + std::to_string(messageID) + ": " + body.description());
}

// Ends the program when the picture is saved.
void savePicture(const MouseMainWindow& window, const QString& file) {
  // The whole screen, so that sheets are on the picture too.
  const QPixmap picture = window.screen()->grabWindow(0, window.x(), window.y(), window.width(), window.height());
  const bool isSaved = !picture.isNull() && picture.save(file, "PNG");
  report((isSaved ? "picture saved: " : "picture not saved: ") + file.toStdString());
  QApplication::exit(isSaved ? EXIT_SUCCESS : EXIT_FAILURE);
}

// For measuring the start-up from outside: the window without settings, and with them.
void reportFirstPaint(MouseMainWindow& window) {
  AfterPaint::run({&window}, &window, [] { report("window shown"); });
}

void reportPaint(MouseMainWindow& window) {
  AfterPaint::run({&window}, &window, [&window] {
    report("window painted: " + std::to_string(window.findChildren<QWidget*>().size() + 1) + " widgets");
  });
  window.update();
}

HubServices makeServices(vorn::EngineLink& link) {
  return {.link = link,
          .notifications = vorn::DistributedNotificationCenter::defaultCenter(),
          .openAddress = [](const QUrl& address) { return QDesktopServices::openUrl(address); },
          .report = report,
          .mustEnd = &QuitOnSignals::isAsked,
          .memoryFile = WindowMemory::usualFile()};
}

}  // namespace

int main(int argc, char** argv) {
  if (const auto status = answerWithoutWindow(CommandLine::parse(argumentsOf(argc, argv)))) return *status;

  // Takes its own options out.
  QApplication application(argc, argv);
  const CommandLine line = CommandLine::parse(QApplication::arguments().mid(1));
  if (!line.error.isEmpty()) {
    report(line.error.toStdString() + " (see --help)");
    return exitBadArguments;
  }
  QApplication::setApplicationName(QStringLiteral("skarn-configurator"));
  QApplication::setApplicationDisplayName(QStringLiteral("Skarn"));
  QApplication::setDesktopFileName(
      QString::fromLatin1(vorn::configuratorIdentifier.data(), vorn::configuratorIdentifier.size()));
  QApplication::setApplicationVersion(Bundle::mainBundle().version());
  installTranslations(QLocale::system().name());
  const DesktopAppearance appearance(line.appearance);
  const MenuKey menuKey;

  const QuitOnSignals quitOnSignals;
  MouseMainWindow* frontWindow = nullptr;
  std::unique_ptr<vorn::SingleInstance> instance;
  if (const auto status = handOverToRunningOne(instance, frontWindow)) return *status;

  BusNotifier busNotifier(vorn::BusConnection::forThisThread());
  vorn::PortEngineLink link;
  if (line.isVerbose) link.setTrace(trace);
  // While the window is built.
  link.beginLocalPort();
  vorn::DistributedNotificationCenter::defaultCenter().believeOnly(vorn::enginePortName);

  MouseMainWindow window;
  frontWindow = &window;
  if (!line.tab.isEmpty()) window.ui().mMouseTabView->setCurrentIndex(static_cast<int>(tabNames().indexOf(line.tab)));
  Vorn_ConfiguratorAppDelegate delegate(window, makeServices(link));
  QApplication::setQuitOnLastWindowClosed(delegate.applicationShouldTerminateAfterLastWindowClosed());
  QObject::connect(&application, &QGuiApplication::applicationStateChanged, &delegate, [&](Qt::ApplicationState state) {
    if (state == Qt::ApplicationInactive) delegate.applicationWillResignActive();
  });
  QObject::connect(&application, &QCoreApplication::aboutToQuit, &delegate,
                   &Vorn_ConfiguratorAppDelegate::applicationWillTerminate);
  if (line.isVerbose) {
    QObject::connect(&delegate, &Vorn_ConfiguratorAppDelegate::startUpFinished, &window, [&] { reportPaint(window); });
  }
  if (!line.picture.isEmpty()) {
    QObject::connect(&delegate, &Vorn_ConfiguratorAppDelegate::startUpFinished, &window,
                     [&] { QTimer::singleShot(pictureDelay, &window, [&] { savePicture(window, line.picture); }); });
  }
  delegate.applicationWillFinishLaunching();
  delegate.applicationDidFinishLaunching(line.launch);
  if (line.isVerbose) reportFirstPaint(window);
  const int status = QApplication::exec();
  frontWindow = nullptr;
  return status;
}
