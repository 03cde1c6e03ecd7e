// An image view that remembers the name of the picture it shows. Pictures are masks and take the text colour.
#pragma once

#include <QLabel>
#include <QString>

namespace skarn {

class NamedImageView : public QLabel {
  Q_OBJECT

 public:
  explicit NamedImageView(QWidget* parent = nullptr);

  // File name among the pictures of the application, for example "usb.png". A missing file shows nothing but keeps
  // its name.
  void setImage(const QString& fileName);
  void clearImage();
  // What the picture says, as a tooltip and for screen readers; gone when the picture is cleared.
  void setWords(const QString& words);
  // The name without its extension; empty when nothing is shown.
  const QString& imageName() const { return mImageName; }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void render();

  QString mFileName;
  QString mImageName;
};

}  // namespace skarn
