// Name and ID of the product family. Requests do not use these values.
#pragma once

#include <QString>
#include <cstdint>

namespace skarn {

class VRCDeviceManager {
 public:
  VRCDeviceManager() { assignProductNameAndPID(); }

  const QString& mProductName() const { return productName; }
  std::uint32_t mProductPID() const { return productPID; }

 private:
  void assignProductNameAndPID() {
    productName = QStringLiteral("Tavikon");
    productPID = 31;
  }

  QString productName;
  std::uint32_t productPID = 0;
};

}  // namespace skarn
