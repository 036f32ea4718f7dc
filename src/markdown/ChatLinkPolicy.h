// Where a link in a conversation may lead.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace Vesk
{

/** A link as it stands in a text. */
struct ChatLink {
    QString address; ///< as written, no HTML
    QString shown;   ///< the text that it stands under
};

/** The folders that a link is read against; absolute paths. */
struct LinkFolders {
    QString project; ///< the session's; empty when there is none
    QString home;    ///< what "~" stands for
};

/** What the disk says of a path. */
struct LinkedFile {
    enum class Kind { Missing, File, Folder, Other };

    Kind kind = Kind::Missing;
    QString realPath; ///< with every symbolic link resolved; empty when missing
    bool executable = false;

    bool operator==(const LinkedFile &) const = default;
};

using LinkedFiles = QHash<QString, LinkedFile>;

/** What becomes of a link that was chosen. */
struct LinkDecision {
    enum class Action {
        OpenInBrowser,
        OpenFile, ///< in the program that the desktop has for it
        Ask,      ///< the same, once a person has seen the reason and said yes
        Refuse,
    };

    Action action = Action::Refuse;
    QUrl url;               ///< what is opened; empty when refused
    QString address;        ///< where it leads, as it can be shown: no sign in it hides or moves another
    QString reason;         ///< for Ask and Refuse
    bool isMissing = false; ///< refused because no file is there

    bool operator==(const LinkDecision &) const = default;
};

namespace ChatLinkPolicy
{

/** The paths that an address may mean, the likeliest first; empty for one that is no file of this machine. */
[[nodiscard]] QStringList pathsIn(const QString &address, const LinkFolders &folders);

/**
 * Web pages open in the browser and files of the project in their program. What is not what it seems to be,
 * or lies outside the project, is asked about; what no honest link holds is refused. `files` answers for
 * pathsIn() and for the project folder; a path without an answer counts as missing.
 */
[[nodiscard]] LinkDecision decide(const ChatLink &link, const LinkFolders &folders, const LinkedFiles &files);

/** An address as it can be shown before it is opened: the host as the network knows it, and control and
    direction signs as their codes. */
[[nodiscard]] QString shownAddress(const QString &address);

} // namespace ChatLinkPolicy

} // namespace Vesk
