// The real window over a scripted link whose engine has mice to choose from.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QToolButton>
#include <string>
#include <vector>

#include "app/HistoryLine.h"
#include "app/HubFixture.h"
#include "app/MouseRecords.h"
#include "app/RowTable.h"
#include "app/StateStrip.h"

namespace skarn::test {

struct MiceFixture : HubFixture {
  using Call = vorn::MiceCall;
  using Request = vorn::MiceRequest;
  using Outcome = vorn::MiceAnswer::Outcome;

  // Connected to an engine with these mice, in a window that is in front.
  explicit MiceFixture(std::vector<vorn::PropertyList> mice, const QString& memory = {}) {
    memoryFile = memory;
    startConnected(bundleWith({"Work"}));
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) QTest::qFail("the window is active", __FILE__, __LINE__);
    answerList(std::move(mice));
  }

  // The list has been asked for, and nothing else.
  void answerList(std::vector<vorn::PropertyList> mice) {
    if (link.miceRequests != std::vector<Request>{{}}) QTest::qFail("only the list is asked for", __FILE__, __LINE__);
    link.miceRequests.clear();
    link.answerMice({Outcome::Done, vorn::PropertyList::array(std::move(mice))});
  }
  // The engine has these mice from now on, and says so.
  void tell(std::vector<vorn::PropertyList> mice) {
    link.miceNews.changed();
    answerList(std::move(mice));
  }
  // What was asked is done, or not; the list that is asked for then is still these.
  void answer(Outcome outcome, std::vector<vorn::PropertyList> mice) {
    link.miceRequests.clear();
    link.answerMice({outcome});
    answerList(std::move(mice));
  }
  void teach(const vorn::TaughtControl& taught, std::vector<vorn::PropertyList> mice) {
    link.miceNews.taught(taught);
    answerList(std::move(mice));
  }
  // Nothing but this has been asked since the last look.
  bool isAsked(const std::vector<Request>& requests) {
    return std::exchange(link.miceRequests, std::vector<Request>()) == requests;
  }
  bool willBeAsked(const std::vector<Request>& requests) {
    return QTest::qWaitFor([&] { return link.miceRequests == requests; }) && isAsked(requests);
  }

  QToolButton& header() { return *window.ui().mChooseMouse; }
  void openSheet() {
    QTest::mouseClick(&header(), Qt::LeftButton);
    if (!isShown("mMouseSheet")) QTest::qFail("the sheet opens", __FILE__, __LINE__);
    QApplication::setActiveWindow(sheet("mMouseSheet"));
  }
  QTableView& table() { return *sheet("mMouseSheet")->findChild<QTableView*>(QStringLiteral("mMouseTable")); }
  QStringList column(int number) {
    QStringList texts;
    for (int row = 0; row < table().model()->rowCount(); ++row)
      texts << table().model()->index(row, number).data().toString();
    return texts;
  }
  int selectedRow() {
    const QModelIndexList rows = table().selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.constFirst().row() : -1;
  }
  QPushButton& button(const char* name) { return *window.findChild<QPushButton*>(QLatin1String(name)); }
  static void click(QAbstractButton& button) { QTest::mouseClick(&button, Qt::LeftButton); }
  HistoryLine& line() { return window.historyLine(); }
};

}  // namespace skarn::test
