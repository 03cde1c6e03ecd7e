#include "app/NamedImageView.h"

#include <QEvent>
#include <QFileInfo>

#include "platform/Images.h"

namespace skarn {

NamedImageView::NamedImageView(QWidget* parent) : QLabel(parent) {}

void NamedImageView::setImage(const QString& fileName) {
  if (fileName == mFileName) return;
  mFileName = fileName;
  mImageName = QFileInfo(fileName).completeBaseName();
  render();
}

void NamedImageView::clearImage() {
  mFileName.clear();
  mImageName.clear();
  clear();
  setWords(QString());
}

void NamedImageView::setWords(const QString& words) {
  setToolTip(words);
  setAccessibleDescription(words);
}

void NamedImageView::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && !mFileName.isEmpty()) render();
}

void NamedImageView::render() {
  setPixmap(tintedImage(mFileName, palette().color(QPalette::WindowText)));
}

}  // namespace skarn
