// SPDX-FileCopyrightText: 2026 The Flipside developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTranslator>
#include <QWidget>
#include <gtest/gtest.h>

namespace testbed {

// Speaks a language of the program while it lives; without a name a made up one, of which no word has a
// letter of English. Its letters are wide, and all but long sentences have more of them: texts take about a
// third more room than the English ones, long sentences a sixth.
class Speaking : public QTranslator {
public:
    static QStringList languages()
    {
        return QDir(QStringLiteral(FLIPSIDE_TRANSLATIONS)).entryList({QStringLiteral("*.qm")}) << QString();
    }

    explicit Speaking(const QString &language = {})
        : m_isMadeUp(language.isEmpty())
    {
        EXPECT_TRUE(m_isMadeUp || load(language, QStringLiteral(FLIPSIDE_TRANSLATIONS)));
        QCoreApplication::installTranslator(this);
    }
    ~Speaking() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *comment, int n) const override
    {
        if (!m_isMadeUp)
            return QTranslator::translate(context, source, comment, n);
        static const QRegularExpression keys(QStringLiteral("^(Ctrl|Alt)\\+|^F1$"));
        const QString english = QString::fromUtf8(source);
        const bool isOfToolkit = *context == 'Q';
        return isOfToolkit || english.contains(keys) ? QString() : madeUp(english);
    }

private:
    static QString madeUp(const QString &english)
    {
        static const QRegularExpression letter(QStringLiteral("(?<!%)(?<!%L)[A-Za-z]"));
        QString text = english;
        for (auto found = letter.match(text); found.hasMatch(); found = letter.match(text))
            text[found.capturedStart()]
                = QChar(text[found.capturedStart()].toLower().unicode() - u'a' + u'à');
        return english.size() < 40 ? text + QString(english.size() / 12, u'ö') : text;
    }

    const bool m_isMadeUp;
};

inline bool isEnglish(QString text, const QStringList &data)
{
    for (const QString &piece : data)
        text.remove(piece, Qt::CaseInsensitive);
    return text.contains(QRegularExpression(QStringLiteral("[A-Za-z]")));
}

// What is to be read or heard of the window and its menus in English letters, but for data.
inline QStringList englishTexts(QWidget *window, const QStringList &data)
{
    QStringList texts;
    QList<QWidget *> widgets = window->findChildren<QWidget *>();
    widgets.append(window);
    for (const QWidget *widget : std::as_const(widgets)) {
        for (const char *text : {"text", "windowTitle", "toolTip", "accessibleName", "accessibleDescription"})
            texts += widget->property(text).toString();
        for (const QAction *action : widget->actions())
            texts += action->text();
    }
    texts.removeIf([&data](const QString &text) { return !isEnglish(text, data); });
    return texts;
}

} // namespace testbed
