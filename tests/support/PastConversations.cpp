#include "support/PastConversations.h"

#include "claude/TranscriptFolders.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace Vesk::Test
{

using namespace Qt::StringLiterals;

namespace
{

QString asLine(const QString &type, const QJsonValue &content)
{
    const QJsonObject line {{u"type"_s, type},
                            {u"timestamp"_s, u"2026-11-20T09:00:01.250Z"_s},
                            {u"message"_s, QJsonObject {{u"role"_s, type}, {u"content"_s, content}}}};
    return QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact));
}

} // namespace

PastConversations::PastConversations(const QString &home, const QString &project)
    : m_home(home.isEmpty() ? m_folder.filePath(u"home"_s) : home)
    , m_project(project.isEmpty() ? QFileInfo(m_folder.path()).canonicalFilePath() + u"/my_app.x"_s : project)
{
    QDir().mkpath(folder());
    QDir().mkpath(m_project);
}

QString PastConversations::root() const
{
    return TranscriptFolders::root(m_home);
}

QString PastConversations::project() const
{
    return m_project;
}

QString PastConversations::folder() const
{
    return root() + u'/' + TranscriptFolders::encodedName(project());
}

QString PastConversations::otherFolder() const
{
    return root() + u'/' + TranscriptFolders::currentName(project());
}

QString PastConversations::path(const QString &id) const
{
    return folder() + u'/' + id + u".jsonl"_s;
}

void PastConversations::write(const QString &id, const QStringList &lines, int secondsAgo,
                              const QString &otherFolder) const
{
    const QString where = otherFolder.isEmpty() ? folder() : otherFolder;
    writeText(where + u'/' + id + u".jsonl"_s, lines.join(u'\n') + u'\n', secondsAgo);
}

void PastConversations::writeText(const QString &path, const QString &text, int secondsAgo) const
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    file.write(text.toUtf8());
    file.flush();
    file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo), QFile::FileModificationTime);
}

QString PastConversations::said(const QString &text)
{
    return asLine(u"user"_s, text);
}

QString PastConversations::answered(const QString &text)
{
    return asLine(u"assistant"_s, QJsonArray {QJsonObject {{u"type"_s, u"text"_s}, {u"text"_s, text}}});
}

QString PastConversations::called(const QString &useId, const QString &tool, const QString &command)
{
    return asLine(u"assistant"_s,
                  QJsonArray {QJsonObject {{u"type"_s, u"tool_use"_s},
                                           {u"id"_s, useId},
                                           {u"name"_s, tool},
                                           {u"input"_s, QJsonObject {{u"command"_s, command}}}}});
}

QString PastConversations::returned(const QString &useId, const QString &output, bool isError)
{
    return asLine(u"user"_s,
                  QJsonArray {QJsonObject {{u"type"_s, u"tool_result"_s},
                                           {u"tool_use_id"_s, useId},
                                           {u"content"_s, output},
                                           {u"is_error"_s, isError}}});
}

QString PastConversations::titled(const QString &title)
{
    return QString::fromUtf8(QJsonDocument(QJsonObject {{u"type"_s, u"ai-title"_s}, {u"aiTitle"_s, title}})
                                 .toJson(QJsonDocument::Compact));
}

} // namespace Vesk::Test
