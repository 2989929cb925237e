// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/FolderChooser.h"

#include "platform/Inquiry.h"
#include "platform/desktop/Foreground.h"
#include "platform/desktop/PortalFolderChooser.h"
#include "platform/desktop/SessionBus.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>
#include <QSet>
#include <QSettings>
#include <QStandardPaths>
#include <QTreeView>
#include <algorithm>

namespace platform {

using std::chrono::milliseconds;

namespace {

// The window stands still meanwhile.
constexpr milliseconds diskTellsWithin{50};
constexpr milliseconds beginningKnownWithin{125};
constexpr milliseconds wantedAnswersWithin{75}; // of that, so that the user's music is asked for as well
constexpr int charactersOfPlaces = 20;
// At most; its frame has to be seen as well.
constexpr double shareOfScreen = 0.9;
// Of the toolkit's list of files.
constexpr int sizeColumn = 1;
constexpr int kindColumn = 2;
constexpr int dateColumn = 3;

// The chooser reads the folder that it opens with on the main thread, so one whose disk does not answer is
// left for the user to choose.
bool isThere(const QString &folder, milliseconds deadline)
{
    return !folder.isEmpty()
        && askAndWait<bool>([folder] { return QDir(folder).exists(); }, deadline).value_or(false);
}

// Empty when it is not there, or not known by then: a file of the user's says where it is.
QString folderOfMusic(milliseconds deadline)
{
    const auto look = [] {
        const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
        return QDir(music).exists() ? music : QString();
    };
    return askAndWait<QString>(look, deadline).value_or(QString());
}

QList<QUrl> places()
{
    const QString music = folderOfMusic(diskTellsWithin);
    QList<QUrl> places{QUrl::fromLocalFile(QDir::rootPath()), QUrl::fromLocalFile(QDir::homePath())};
    if (!music.isEmpty() && music != QDir::homePath())
        places.append(QUrl::fromLocalFile(music));
    return places;
}

// The end of such a chooser waits for the thread that has listed its folders, and with it for the disk. So
// one whose disk is silent is only hidden, until the disk has told of all of it, and left behind by the end
// of the program.
class FolderSheet : public QFileDialog {
public:
    FolderSheet(QWidget *window, const FolderQuestion &question, FolderChoice choice)
        : QFileDialog(window)
        , m_choice(std::move(choice))
        , m_listed(question.beginIn)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setFileMode(QFileDialog::Directory);
        setOption(QFileDialog::ShowDirsOnly);
        setWindowTitle(question.title);
        setDirectory(question.beginIn);
        connect(this, &QFileDialog::directoryEntered, this,
            [this](const QString &folder) { m_listed += folder; });
        connect(qApp, &QCoreApplication::aboutToQuit, this, &FolderSheet::leaveBehind);
        setSidebarUrls(places());
        showWhatFoldersNeed();
        resize(sizeHint().boundedTo((window ? window : this)->screen()->availableSize() * shareOfScreen));
    }

    ~FolderSheet() override { answer({}); }

    bool isOpen() const { return m_choice != nullptr; }

    void done(int result) override
    {
        setAttribute(Qt::WA_DeleteOnClose, diskTellsOf(m_listed));
        endCompletion();
        QFileDialog::done(result);
        const QList<QUrl> urls = result == Accepted ? selectedUrls() : QList<QUrl>();
        const bool chosen = !urls.isEmpty() && urls.first().isLocalFile();
        answer(chosen ? std::optional(urls.first()) : std::nullopt);
    }

private:
    void answer(const std::optional<QUrl> &folder)
    {
        if (const FolderChoice choice = std::exchange(m_choice, {}))
            choice(folder);
    }

    // While its list of completions is open, and it may come when the folder has been read, the toolkit takes
    // no notice of the window that becomes active: the card would have no focus and no keys after it.
    void endCompletion()
    {
        auto *const field = findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        if (!field || !field->completer())
            return;
        field->completer()->popup()->hide();
        field->setCompleter(nullptr);
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
            folders->hideColumn(dateColumn);
            folders->header()->setSectionResizeMode(QHeaderView::Stretch);
        }
    }

    bool diskTellsOf(const QStringList &folders)
    {
        const auto look = [folders] {
            bool isThere = false;
            for (const QString &folder : folders)
                for (const QFileInfo &entry : QDir(folder).entryInfoList())
                    isThere |= entry.lastModified().isValid();
            return isThere;
        };
        const auto later = [this](const std::optional<bool> &answer) {
            if (answer)
                deleteLater();
        };
        return m_disk.askAndWait(look, diskTellsWithin, LateAnswer::Adopted, later).has_value();
    }

    void leaveBehind()
    {
        static auto *const left = new QSet<QObject *>; // where a leak checker finds it
        left->insert(this);
        setParent(nullptr);
    }

    FolderChoice m_choice;
    QStringList m_listed;
    Inquiry<bool> m_disk;
};

QString placeToBegin(const QString &wanted)
{
    const QDeadlineTimer known(beginningKnownWithin);
    if (isThere(wanted, wantedAnswersWithin))
        return wanted;
    const QString music = folderOfMusic(milliseconds(known.remainingTime()));
    return music.isEmpty() ? QDir::homePath() : music;
}

// On whichever card: both are on one window.
QDialog *openChooser(const QWidget *window)
{
    const auto dialogs = window->window()->findChildren<QDialog *>();
    const auto found = std::ranges::find_if(dialogs, [](QDialog *dialog) {
        const auto *const sheet = dynamic_cast<FolderSheet *>(dialog);
        return sheet ? sheet->isOpen() : dynamic_cast<PortalFolderChooser *>(dialog) != nullptr;
    });
    return found == dialogs.end() ? nullptr : *found;
}

// The toolkit's chooser keeps how it looked in a file of the toolkit's, for whose disk the window would wait
// when the folder has been chosen.
void keepNothing()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

// `open` makes it window-modal.
void openSheet(QWidget *window, const FolderQuestion &question, FolderChoice choice)
{
    keepNothing();
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
