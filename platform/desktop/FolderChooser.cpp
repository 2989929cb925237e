// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FolderChooser.h"

#include <QFileDialog>

namespace platform {

namespace {

std::function<void(QWidget *, FolderChoice)> &chooserInUse()
{
    static std::function<void(QWidget *, FolderChoice)> instance;
    return instance;
}

class FolderSheet : public QFileDialog {
public:
    FolderSheet(QWidget *window, FolderChoice choice)
        : QFileDialog(window)
        , m_choice(std::move(choice))
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setFileMode(QFileDialog::Directory);
        setOption(QFileDialog::ShowDirsOnly);
    }

    ~FolderSheet() override { answer({}); }

    void done(int result) override
    {
        QFileDialog::done(result);
        const QList<QUrl> urls = selectedUrls();
        const bool chosen = result == Accepted && !urls.isEmpty() && urls.first().isLocalFile();
        answer(chosen ? std::optional(urls.first()) : std::nullopt);
    }

private:
    void answer(const std::optional<QUrl> &folder)
    {
        if (const FolderChoice choice = std::exchange(m_choice, {}))
            choice(folder);
    }

    FolderChoice m_choice;
};

} // namespace

void chooseFolder(QWidget *window, FolderChoice choice)
{
    if (chooserInUse())
        return chooserInUse()(window, std::move(choice));
    for (QObject *child : window->children()) {
        if (auto *open = dynamic_cast<FolderSheet *>(child)) {
            open->raise();
            open->activateWindow();
            return choice({});
        }
    }
    // `open` makes it window-modal.
    (new FolderSheet(window, std::move(choice)))->open();
}

void setFolderChooser(std::function<void(QWidget *, FolderChoice)> chooser)
{
    chooserInUse() = std::move(chooser);
}

} // namespace platform
