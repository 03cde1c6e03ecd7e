// The application's own resources: where they lie and what the application is called. Main thread; nothing here fails,
// a path is given whether or not the file exists.
#pragma once

#include <QString>

namespace skarn {

class Bundle {
 public:
  // The running application's. Its folder is $SKARN_SHARE_DIR where that is set and not empty, otherwise
  // ../share/skarn-configurator beside the folder of the executable; it is looked up once.
  static const Bundle& mainBundle();

  explicit Bundle(QString folder);

  QString version() const;  // what other platforms keep under "CFBundleVersion", for example "0.1.0"

  const QString& path() const { return mPath; }
  QString resourcePath(const QString& name) const;  // of a file or folder, for example "Skarn.plist"
  QString imagePath(const QString& name) const;     // of a picture by its whole name, for example "usb.png"

 private:
  QString mPath;
};

}  // namespace skarn
