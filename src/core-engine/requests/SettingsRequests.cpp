#include "core-engine/requests/SettingsRequests.h"

#include "core-engine/news/News.h"

namespace vorn::engine {

bool provideSettings(EngineParts& parts, const Request& request, const std::string& defaultsPath) {
  if (!parts.store.isEmpty()) return true;
  const std::string& path = defaultsPath.empty() ? parts.defaults.ownFile() : defaultsPath;
  std::string error;
  const auto bundle = parts.defaults.read(path, error);
  if (!bundle) {
    parts.log.fault(request.sender, "no usable default settings",
                    "there are no settings yet and " + path + " gives none: " + error);
    return false;
  }
  parts.store.fill(*bundle);
  parts.log.line("took the default settings of " + path);
  return true;
}

ChangeOrigin originOf(const Request& request) {
  return {.kind = ChangeOrigin::Kind::Request,
          .client = request.sender,
          .sourceApp = sourceAppOf(request),
          .request = request.messageID,
          .isContinuation = request.isContinuation()};
}

Answer getAllSettings(EngineParts& parts, const Request& request) {
  if (!provideSettings(parts, request, {})) return PropertyList::dictionary({{replyKeys::ReturnStatus, 1}});
  parts.clients.readsSettings(request.replyPort());
  return PropertyList::dictionary({{replyKeys::AllDevSettings, parts.store.bundle()}, {replyKeys::ReturnStatus, 0}});
}

}  // namespace vorn::engine
