// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FolderChooser.h"

#include "platform/Inquiry.h"
#include "platform/desktop/Foreground.h"
#include "platform/desktop/PortalFolderChooser.h"
#include "platform/desktop/SessionBus.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>
#include <QTreeView>
#include <algorithm>

namespace platform {

namespace {

constexpr std::chrono::milliseconds firstFolderAnswersWithin{150};
constexpr int charactersOfPlaces = 20;
// Of the toolkit's list of files.
constexpr int sizeColumn = 1;
constexpr int kindColumn = 2;

QList<QUrl> places()
{
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    QList<QUrl> places{QUrl::fromLocalFile(QDir::rootPath()), QUrl::fromLocalFile(QDir::homePath())};
    if (music != QDir::homePath())
        places.append(QUrl::fromLocalFile(music));
    return places;
}

class FolderSheet : public QFileDialog {
public:
    FolderSheet(QWidget *window, const FolderQuestion &question, FolderChoice choice)
        : QFileDialog(window)
        , m_choice(std::move(choice))
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setFileMode(QFileDialog::Directory);
        setOption(QFileDialog::ShowDirsOnly);
        setWindowTitle(question.title);
        setDirectory(question.beginIn);
        setSidebarUrls(places());
        showWhatFoldersNeed();
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

    // The toolkit shows kinds of files, two ways to list them, and hardly anything of the places' names. Its
    // parts have kept these names; where the desktop's theme has a chooser of its own there are none.
    void showWhatFoldersNeed()
    {
        for (const char *name : {"fileTypeLabel", "fileTypeCombo", "listModeButton", "detailModeButton"}) {
            if (auto *const part = findChild<QWidget *>(QString::fromLatin1(name)))
                part->hide();
        }
        if (auto *const list = findChild<QWidget *>(QStringLiteral("sidebar")))
            list->setMinimumWidth(list->fontMetrics().averageCharWidth() * charactersOfPlaces);
        if (auto *const folders = findChild<QTreeView *>(QStringLiteral("treeView"))) {
            folders->hideColumn(sizeColumn);
            folders->hideColumn(kindColumn);
        }
    }

    FolderChoice m_choice;
};

// What the chooser opens with it asks for on the main thread, so that a disk that does not answer is left to
// the user.
bool isThere(const QString &folder)
{
    return !folder.isEmpty()
        && askAndWait<bool>([folder] { return QDir(folder).exists(); }, firstFolderAnswersWithin)
               .value_or(false);
}

QString placeToBegin(const QString &wanted)
{
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return isThere(wanted) ? wanted : isThere(music) ? music : QDir::homePath();
}

// On whichever card: both are on one window.
QDialog *openChooser(const QWidget *window)
{
    const auto dialogs = window->window()->findChildren<QDialog *>();
    const auto found = std::ranges::find_if(dialogs, [](QDialog *dialog) {
        return dynamic_cast<FolderSheet *>(dialog) || dynamic_cast<PortalFolderChooser *>(dialog);
    });
    return found == dialogs.end() ? nullptr : *found;
}

// `open` makes it window-modal.
void openSheet(QWidget *window, const FolderQuestion &question, FolderChoice choice)
{
    (new FolderSheet(window, question, std::move(choice)))->open();
}

// A chooser of the desktop cannot be raised by itself. It stands on the window, and comes with it.
QWidget *inFront(QDialog *chooser)
{
    return chooser->testAttribute(Qt::WA_DontShowOnScreen) ? chooser->parentWidget()->window() : chooser;
}

void askDesktop(QWidget *window, const FolderQuestion &question, FolderChoice choice)
{
    if (QDialog *const open = openChooser(window)) {
        bringToFront(inFront(open));
        return choice({});
    }
    FolderQuestion whole = question;
    whole.beginIn = placeToBegin(question.beginIn);
    if (!SessionBus::shared().connection().isConnected())
        return openSheet(window, whole, std::move(choice));
    new PortalFolderChooser(window, whole, std::move(choice),
        [window, whole](FolderChoice taken) { openSheet(window, whole, std::move(taken)); });
}

} // namespace

void chooseFolder(QWidget *window, const FolderQuestion &question, FolderChoice choice)
{
    folderChooser().inUse()(window, question, std::move(choice));
}

Seam<FolderChooser> &folderChooser()
{
    static Seam<FolderChooser> seam(askDesktop);
    return seam;
}

} // namespace platform
