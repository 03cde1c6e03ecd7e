#include "macros/MacroTextSheet.h"

#include <QStringList>

#include "macros/NumberOnlyTextField.h"
#include "model/MacroEvents.h"
#include "platform/Localization.h"
#include "ui_MacroTextSheet.h"
#include "widgets/SheetFlags.h"

namespace skarn {

namespace {

// The characters one by one, as a person can tell them.
QString listed(const std::string& characters) {
  QStringList parts;
  for (const char32_t character : QString::fromStdString(characters).toUcs4()) {
    const QString shown = QString::fromUcs4(&character, 1);
    parts << (shown.at(0).isPrint() || shown.size() > 1
                  ? shown
                  : QStringLiteral("U+%1").arg(static_cast<uint>(character), 4, 16, QLatin1Char('0')));
  }
  return parts.join(QLatin1Char(' '));
}

}  // namespace

MacroTextSheet::MacroTextSheet(QWidget* window, int delay, const QString& text)
    : QDialog(window, sheetFlags), mUi(std::make_unique<Ui::MacroTextSheet>()) {
  mUi->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  mUi->mTypedDelay->setText(QString::number(delay));
  mUi->mTypedText->setText(text);
  // The note may come to need two lines; the sheet keeps its size.
  mUi->mTypedTextNote->setMinimumHeight(2 * mUi->mTypedTextNote->fontMetrics().lineSpacing());
  mUi->mTypedTextNote->setTextFormat(Qt::PlainText);
  connect(mUi->mTypedText, &QLineEdit::textChanged, this, &MacroTextSheet::read);
  connect(mUi->mTypedDelay, &QLineEdit::textChanged, this, &MacroTextSheet::read);
  connect(mUi->mTypedDelay, &NumberOnlyTextField::editRefused, this, &MacroTextSheet::editRefused);
  connect(mUi->mTypedTextOK, &QPushButton::clicked, this, &MacroTextSheet::accept);
  connect(mUi->mTypedTextCancel, &QPushButton::clicked, this, &MacroTextSheet::reject);
  read();
  mUi->mTypedText->setFocus();
}

MacroTextSheet::~MacroTextSheet() = default;

QString MacroTextSheet::whyNot() const {
  if (mUi->mTypedText->text().isEmpty()) return localized("lkeyEnterTextFirst");
  if (!mTyped.cannotBeTyped.empty()) return localized("lkeyCannotBeTyped").arg(listed(mTyped.cannotBeTyped));
  if (mUi->mTypedDelay->text().isEmpty()) return localized("lkeyEnterDelayFirst");
  if (mTyped.events.size() > vorn::maximumMacroEvents) return localized("lkeyTextIsTooLong");
  return {};
}

void MacroTextSheet::read() {
  mTyped = vorn::typedText(mUi->mTypedText->text().toStdString(), mUi->mTypedDelay->integerValue());
  const QString why = whyNot();
  mUi->mTypedTextOK->setEnabled(why.isEmpty());
  mUi->mTypedTextOK->setToolTip(why);
  const auto events = static_cast<int>(mTyped.events.size());
  // The field shows a line break as a space.
  const bool hasBreaks = mUi->mTypedText->text().contains(QLatin1Char('\n'));
  const char* note = hasBreaks ? "lkeyTextMakesEventsAndBreaks" : "lkeyTextMakesEvents";
  mUi->mTypedTextNote->setText(why.isEmpty() ? localized(note).arg(events) : why);
}

void MacroTextSheet::accept() {
  if (!whyNot().isEmpty()) return;
  // The sheet is gone before anything is sent.
  const vorn::MacroEventList events = mTyped.events;
  QDialog::accept();
  emit confirmed(events);
}

}  // namespace skarn
