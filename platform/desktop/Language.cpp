// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#include "platform/desktop/Language.h"

#include "platform/Logging.h"
#include "platform/ThreadCheck.h"

#include <QFile>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <array>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

// As the C library reads its environment: without a locale, LANGUAGE has no say.
bool isCLocale()
{
    QByteArray locale;
    for (const char *variable : std::array{"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = qgetenv(variable);
        if (!locale.isEmpty())
            break;
    }
    const QByteArray language = locale.split('.').constFirst();
    return language.isEmpty() || language == "C" || language == "POSIX";
}

QString folder()
{
    const QString given = qEnvironmentVariable("FLIPSIDE_TRANSLATIONS");
    return given.isEmpty() ? u":/i18n"_s : given;
}

bool install(const QLocale &language, const QString &catalogue, const QString &from)
{
    auto *const translator = new QTranslator(qApp);
    if (translator->load(language, catalogue, u"_"_s, from))
        return QCoreApplication::installTranslator(translator);
    delete translator;
    return false;
}

// Where Chinese is written in simplified characters it is written as in China.
QLocale inWriting(const QString &name)
{
    const QLocale locale(name);
    const bool isSimplified
        = locale.language() == QLocale::Chinese && locale.script() == QLocale::SimplifiedHanScript;
    return isSimplified ? QLocale(QLocale::Chinese, QLocale::China) : locale;
}

bool hasCatalogue(const QString &name)
{
    return QFile::exists(u"%1/flipside_%2.qm"_s.arg(folder(), name));
}

} // namespace

// A desktop has a list of languages, the best first. English needs no translation and ends the search.
void speakLanguageOfDesktop()
{
    assertMainThread();
    if (isCLocale())
        return;
    const QStringList languages = QLocale::system().uiLanguages();
    for (const QString &name : languages) {
        const QLocale language = inWriting(name);
        if (language.language() == QLocale::English || language.language() == QLocale::C)
            return;
        if (install(language, u"flipside"_s, folder())) {
            install(language, u"qtbase"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
            if (language.textDirection() == Qt::RightToLeft)
                QGuiApplication::setLayoutDirection(Qt::RightToLeft);
            return;
        }
        if (hasCatalogue(language.name()) || hasCatalogue(language.name().section(u'_', 0, 0))) {
            qCWarning(lcPlatform, "The translation into %s cannot be read.", qPrintable(name));
            return;
        }
    }
}

} // namespace platform
