// A scratch folder of transcripts, as the agent program would have left them.
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Vesk::Test
{

/** One project and its conversations. */
class PastConversations
{
public:
    /** Under a home of its own, or under this one; of a project of its own, or of this one. */
    explicit PastConversations(const QString &home = {}, const QString &project = {});

    [[nodiscard]] QString root() const;
    [[nodiscard]] QString project() const; ///< its folder; a name that old and new agents encode differently
    [[nodiscard]] QString folder() const;  ///< where older agents keep its transcripts
    [[nodiscard]] QString otherFolder() const; ///< where today's do
    [[nodiscard]] QString path(const QString &id) const;

    /** Writes a transcript of these lines that was last changed that long ago. */
    void write(const QString &id, const QStringList &lines, int secondsAgo = 0,
               const QString &folder = {}) const;
    void writeText(const QString &path, const QString &text, int secondsAgo = 0) const;

    // Lines
    [[nodiscard]] static QString said(const QString &text);
    [[nodiscard]] static QString answered(const QString &text);
    [[nodiscard]] static QString called(const QString &useId, const QString &tool, const QString &command);
    [[nodiscard]] static QString returned(const QString &useId, const QString &output, bool isError);
    [[nodiscard]] static QString titled(const QString &title);

private:
    QTemporaryDir m_folder;
    QString m_home, m_project;
};

} // namespace Vesk::Test
