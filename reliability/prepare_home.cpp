// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

// Writes the settings that a user would have made by hand: prepare_home SETTINGS_FILE FOLDER
// [PROPERTY=NUMBER]... The properties are those of the encoder's configuration.

#include "encoder/KTMp3LameConfig.h"
#include "platform/Bookmark.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 3)
        return 2;
    KTMp3LameConfig config;
    for (int i = 3; i < argc; ++i) {
        const QByteArrayList words = QByteArray(argv[i]).split('=');
        if (words.size() != 2 || !config.setProperty(words[0].constData(), words[1].toDouble())) {
            std::fprintf(stderr, "no such property: %s\n", argv[i]);
            return 2;
        }
    }
    platform::UserDefaults defaults(QFile::decodeName(argv[1]));
    const QUrl folder = QUrl::fromLocalFile(QFile::decodeName(argv[2]));
    defaults.setData(platform::bookmarkDataForFolder(folder), u"HBWorkingPathKey"_s);
    defaults.setData(KTMp3LameConfig::archivedData(config), u"HBConfigDataKey"_s);
    defaults.setBool(false, u"showInFinderWhenFinishRecording"_s);
    return defaults.synchronize() ? 0 : 1;
}
