#include "buttons/SwapSheet.h"

#include <algorithm>

#include "ui_SwapSheet.h"

namespace skarn {

SwapSheet::SwapSheet(QWidget* window) : AssignmentSheet(window), mUi(std::make_unique<Ui::SwapSheet>()) {
  mUi->setupUi(this);
  connectButtons(mUi->mSwapOK, mUi->mSwapCancel, mUi->mSwapProblem);
  connect(mUi->mSwapPopUp, &QComboBox::currentIndexChanged, this, &SwapSheet::controlChosen);
}

SwapSheet::~SwapSheet() = default;

void SwapSheet::begin(const QString& subject, const std::vector<Choice>& choices, int selected) {
  mUi->mSwapSubject->setText(subject);
  mUi->mSwapPopUp->clear();
  for (const Choice& choice : choices) mUi->mSwapPopUp->addItem(choice.title, choice.number);
  mUi->mSwapPopUp->setCurrentIndex(std::max(mUi->mSwapPopUp->findData(selected), 0));
  mUi->mSwapPopUp->setFocus();
  open();
}

void SwapSheet::describe(const QString& subject, const std::vector<Choice>& choices) {
  mUi->mSwapSubject->setText(subject);
  for (std::size_t place = 0; place < choices.size(); ++place)
    mUi->mSwapPopUp->setItemText(static_cast<int>(place), choices[place].title);
}

int SwapSheet::selectedNumber() const {
  return mUi->mSwapPopUp->currentData().toInt();
}

void SwapSheet::setProblem(const QString& problem) {
  mUi->mSwapOK->setEnabled(problem.isEmpty());
  explainOK(problem);
}

}  // namespace skarn
