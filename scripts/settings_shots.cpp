// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Draws the preferences card and the encoder sheet as they look on a desktop with a light and with a dark
// theme: settings_shots FOLDER light|dark, once for each QT_SCALE_FACTOR.

#include "platform/DiskState.h"
#include "platform/UserDefaults.h"
#include "settings/HBPreferencesWndCtrl.h"
#include "settings/KTMP3ConfigureWndCtrl.h"
#include "testbed/Waiting.h"
#include "ui/ElidedLabel.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QStyleFactory>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 36;

struct Theme {
    const char *name;
    QColor window;
    QColor text;
};

constexpr Theme themes[]
    = {{"light", {0xe4, 0xe7, 0xea}, {0x20, 0x20, 0x20}}, {"dark", {0x16, 0x18, 0x1a}, {0xee, 0xee, 0xee}}};

// The windows as they lie on the desktop, the last one on top.
void save(const QList<QWidget *> &windows, const QColor &desktop, const QString &path)
{
    const QRect frame = windows.first()->geometry();
    const double ratio = windows.first()->devicePixelRatio();
    QPixmap picture((frame.size() + QSize(2 * margin, 2 * margin)) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(desktop);
    QPainter painter(&picture);
    for (QWidget *window : windows)
        painter.drawPixmap(window->pos() - frame.topLeft() + QPoint(margin, margin), window->grab());
    if (!picture.save(path))
        qFatal("%s cannot be written", qPrintable(path));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        qFatal("settings_shots FOLDER light|dark");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const Theme &theme = themes[qstrcmp(argv[2], "dark") == 0];
    // What a desktop's theme plugin would have set.
    QApplication::setStyle(QStyleFactory::create(u"Windows"_s));
    QPalette palette(theme.window);
    palette.setColor(QPalette::WindowText, theme.text);
    QApplication::setPalette(palette);
    QApplication::setFont(QFont(u"Inter"_s, 10));

    const QTemporaryDir home;
    const auto settings = platform::userDefaults().replace(
        std::make_shared<platform::UserDefaults>(home.filePath(u"flipside.conf"_s)));
    const auto disk = platform::disk().replace([](const QString &, const QString &) {
        return platform::DiskState{platform::DiskState::Writable, 12'350'000'000};
    });
    QDir(home.path()).mkdir(u"Recordings"_s);

    HBPreferencesWndCtrl preferences(u"HBPreferencesWndCtrl"_s);
    QWidget *card = preferences.window();
    preferences.setWorkingPathWithURL(QUrl::fromLocalFile(home.filePath(u"Recordings"_s)));
    const QString name = QString::fromUtf8(argv[1]) + u"/%1-"_s + QString::fromLatin1(theme.name)
        + u"-%2x.png"_s.arg(application.devicePixelRatio());
    card->findChild<ElidedLabel *>(u"workingFolder"_s)->setText(u"/home/user/Recordings"_s);
    card->show();
    // The last to come: the disk's answer.
    if (!testbed::waitUntil([&preferences] { return preferences.recordingEstimate().contains(u"fit"_s); }))
        qFatal("the disk does not answer");
    save({card}, theme.window, name.arg(u"preferences"_s));

    KTMP3ConfigureWndCtrl sheet(u"KTMP3ConfigureWndCtrl"_s);
    const auto config = QSharedPointer<KTMp3LameConfig>::create();
    config->setEncoderTarget(KTMp3LameConfig::BitrateTarget);
    config->setIsCBR(true);
    sheet.beginSheetForModalWindow(card, config);
    save({card, sheet.window()}, theme.window, name.arg(u"encoder-sheet"_s));
    return 0;
}
