// The web pages that the window leads to. Their addresses are a resource that the build writes from its settings. Main
// thread.
#pragma once

#include <QUrl>
#include <cstdint>
#include <functional>

class QWidget;

namespace skarn {

enum class WebPage : std::uint8_t { Community, News, Guild, Support };

// Empty where this build has no such page.
QUrl addressOf(WebPage page);

// Opens the address in the default web browser; false when there is no way to.
using OpenAddress = std::function<bool(const QUrl&)>;

// Where the page cannot be opened, an alert on the window gives its address, to be copied. Without a way to open pages
// nothing happens.
void openPage(QWidget* window, WebPage page, const OpenAddress& open);

}  // namespace skarn
