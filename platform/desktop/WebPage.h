// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QUrl>
#include <functional>

namespace platform {

// Opens a web page in the user's browser; that no browser can be found is ignored. Main thread only.
void openWebPage(const QUrl &url);

// Takes the pages in place of the browser, in a test for example. An empty function brings the browser back.
void setWebPageOpener(std::function<void(const QUrl &)> opener);

} // namespace platform
