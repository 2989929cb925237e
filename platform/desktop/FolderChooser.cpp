// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FolderChooser.h"

#include <QFileDialog>

namespace platform {

namespace {

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

void openSheet(QWidget *window, FolderChoice choice)
{
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

} // namespace

void chooseFolder(QWidget *window, FolderChoice choice)
{
    folderChooser().inUse()(window, std::move(choice));
}

Seam<std::function<void(QWidget *, FolderChoice)>> &folderChooser()
{
    static Seam<std::function<void(QWidget *, FolderChoice)>> seam(openSheet);
    return seam;
}

} // namespace platform
