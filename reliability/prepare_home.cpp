// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Writes the settings that a user would have made by hand: prepare_home SETTINGS_FILE FOLDER
// [PROPERTY=NUMBER]... The properties are those of the encoder's configuration.

#include "EncoderSettings.h"
#include "platform/Bookmark.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QFile>
#include <span>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 3)
        return 2;
    KTMp3LameConfig config;
    if (!takeSettings(config, std::span(argv, size_t(argc)).subspan(3)))
        return 2;
    platform::UserDefaults defaults(QFile::decodeName(argv[1]));
    const QUrl folder = QUrl::fromLocalFile(QFile::decodeName(argv[2]));
    defaults.setData(platform::bookmarkDataForFolder(folder), u"HBWorkingPathKey"_s);
    defaults.setData(KTMp3LameConfig::archivedData(config), u"HBConfigDataKey"_s);
    defaults.setBool(false, u"showInFinderWhenFinishRecording"_s);
    return defaults.synchronize() ? 0 : 1;
}
