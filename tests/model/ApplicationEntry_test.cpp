#include "model/ApplicationEntry.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using Arguments = std::vector<std::string>;

const std::string path = "/apps/editor.desktop";

std::optional<LaunchCommand> read(const std::string& lines) {
  std::string error;
  const auto command = readDesktopEntry("[Desktop Entry]\nType=Application\n" + lines, path, error);
  EXPECT_EQ(command.has_value(), error.empty());
  return command;
}

// The arguments of an Exec.
Arguments argumentsOf(const std::string& exec, const std::string& lines = {}) {
  const auto command = read("Exec=" + exec + "\n" + lines);
  return command ? command->arguments : Arguments();
}

std::string errorOf(const std::string& text) {
  std::string error;
  EXPECT_EQ(readDesktopEntry(text, path, error), std::nullopt);
  return error;
}

TEST(ApplicationEntryTest, TellsTheProgramItsFolderAndItsTerminal) {
  EXPECT_EQ(read("Exec=editor --new\nPath=/work\nTerminal=true\n"),
            (LaunchCommand{{"editor", "--new"}, "/work", true}));
  EXPECT_EQ(read("Exec=editor"), (LaunchCommand{{"editor"}, "", false}));
}

TEST(ApplicationEntryTest, TellsWhatElseAStartNeeds) {
  EXPECT_EQ(read("Exec=editor\nTryExec=/opt/editor\nStartupNotify=false\n"),
            (LaunchCommand{{"editor"}, "", false, "/opt/editor", "", false}));
  EXPECT_EQ(read("Exec=editor\nStartupNotify=true\n"), (LaunchCommand{{"editor"}, "", false}));
}

TEST(ApplicationEntryTest, TellsTheBusNameOfAnApplicationThatCanBeActivated) {
  const auto busNameOf = [](const std::string& file, const std::string& lines) -> std::string {
    std::string error;
    const auto command = readDesktopEntry("[Desktop Entry]\nType=Application\n" + lines, "/apps.d/" + file, error);
    return command ? command->busName : error;
  };
  const std::string activatable = "Exec=editor\nDBusActivatable=true\n";
  EXPECT_EQ(busNameOf("org.vorn.Editor.desktop", activatable), "org.vorn.Editor");
  EXPECT_EQ(busNameOf("org.vorn.My-Editor_2.desktop", activatable), "org.vorn.My-Editor_2");
  EXPECT_EQ(busNameOf("org.vorn.Editor.desktop", "DBusActivatable=true\n"), "org.vorn.Editor");
  EXPECT_EQ(busNameOf("org.vorn.Editor.desktop", "Exec=editor\nDBusActivatable=false\n"), "");
  EXPECT_EQ(busNameOf("org.vorn.Editor.desktop", "Exec=editor\n"), "");
  const std::string long255 = "org." + std::string(251, 'x');
  EXPECT_EQ(busNameOf(long255 + ".desktop", activatable), long255);
  for (const std::string& file : {std::string("editor"), std::string("org..Editor"), std::string("org.7zip"),
                                  std::string("org.vorn.My Editor"), std::string(".org.Editor"), long255 + "x"})
    EXPECT_EQ(busNameOf(file + ".desktop", activatable), "") << file;
  EXPECT_EQ(busNameOf("editor.desktop", "DBusActivatable=true\n"), "the desktop entry has no usable Exec");
}

TEST(ApplicationEntryTest, IsReadFromItsOwnGroupOnly) {
  std::string error;
  const auto command = readDesktopEntry(
      "# comment\r\n\r\n[Other]\nExec=wrong\n[Desktop Entry]\r\n Type = Application \r\nExec[de]=falsch\nno pair\n"
      "Exec = right\nExec=second\n[Desktop Action new]\nExec=wrong\nType=Link\n",
      path, error);
  EXPECT_EQ(command, (LaunchCommand{{"right"}, "", false}));
}

TEST(ApplicationEntryTest, KeepsQuotedArgumentsTogether) {
  EXPECT_EQ(argumentsOf(R"("/opt/My Editor/run" "a b" c)"), (Arguments{"/opt/My Editor/run", "a b", "c"}));
  EXPECT_EQ(argumentsOf(R"(editor "" x)"), (Arguments{"editor", "", "x"}));
}

TEST(ApplicationEntryTest, TakesOffBothKindsOfEscapes) {
  EXPECT_EQ(argumentsOf(R"(editor "\\"q\\" \\$HOME \\\\ \\`x\\`")"), (Arguments{"editor", R"("q" $HOME \ `x`)"}));
  EXPECT_EQ(argumentsOf(R"(editor\sone\ttwo)"), (Arguments{"editor", "one", "two"}));
}

TEST(ApplicationEntryTest, FillsItsFieldCodesInForAStartWithoutFiles) {
  EXPECT_EQ(argumentsOf("editor %f %F %u %U %d %D %n %N %v %m end"), (Arguments{"editor", "end"}));
  EXPECT_EQ(argumentsOf("editor %% 100%%"), (Arguments{"editor", "%", "100%"}));
  EXPECT_EQ(argumentsOf("editor --caption=%c %k", "Name=My Editor\nName[de]=Mein Editor\n"),
            (Arguments{"editor", "--caption=My Editor", path}));
  EXPECT_EQ(argumentsOf("editor %i end", "Icon=pen\n"), (Arguments{"editor", "--icon", "pen", "end"}));
  EXPECT_EQ(argumentsOf("editor %i end"), (Arguments{"editor", "end"}));
}

TEST(ApplicationEntryTest, IsRefusedWithoutAUsableExec) {
  for (const char* exec : {"", " ", "%f", "\"open", "editor %", "editor %x", "\"\""}) {
    EXPECT_EQ(errorOf("[Desktop Entry]\nType=Application\nExec=" + std::string(exec)),
              "the desktop entry has no usable Exec");
  }
}

TEST(ApplicationEntryTest, IsRefusedWhenItIsNoApplication) {
  EXPECT_EQ(errorOf(""), "no desktop entry of an application");
  EXPECT_EQ(errorOf("[Desktop Entry]\nType=Link\nExec=editor"), "no desktop entry of an application");
  EXPECT_EQ(errorOf("[Desktop Entry]\nType=Application\nHidden=true\nExec=editor"), "the desktop entry is hidden");
  EXPECT_EQ(errorOf("[Desktop Entry]\nType=Application\nExec=a" + std::string(1, '\0')), "no desktop entry");
}

TEST(ApplicationEntryBundleTest, NamesItsProgram) {
  std::string error;
  EXPECT_EQ(bundleExecutable(PropertyList::dictionary({{"CFBundleExecutable", "Editor"}}), error), "Editor");
  EXPECT_EQ(error, "");
}

TEST(ApplicationEntryBundleTest, NamesNoProgramOutsideOfItself) {
  for (const PropertyList& name :
       {PropertyList(), PropertyList(""), PropertyList("."), PropertyList(".."), PropertyList("../sh"),
        PropertyList("/bin/sh"), PropertyList(5), PropertyList(std::string_view("a\0b", 3))}) {
    std::string error;
    EXPECT_EQ(bundleExecutable(PropertyList::dictionary({{"CFBundleExecutable", name}}), error), std::nullopt);
    EXPECT_EQ(error, "the application bundle names no program");
  }
}

}  // namespace
}  // namespace vorn
