#include "issues/IssueScaffold.h"

#include "base/Files.h"
#include "issues/IssueScaffoldTexts_p.h"

#include <QDir>
#include <QFile>

#include <filesystem>
#include <system_error>

namespace Vesk
{

using namespace Qt::StringLiterals;

namespace
{

constexpr qsizetype keyLength = 3;

bool isAsciiLetter(QChar c)
{
    return c.unicode() < 0x80 && c.isLetter();
}

/** The words of "login-serverFarm" are "login", "server" and "Farm". */
QStringList wordsOf(const QString &name)
{
    QStringList words;
    QChar before;
    for (const QChar c : name) {
        if (isAsciiLetter(c)) {
            if (!isAsciiLetter(before) || (before.isLower() && c.isUpper())) {
                words.append(QString());
            }
            words.last().append(c);
        }
        before = c;
    }
    return words;
}

/** Whether a file of this name is there, in any case: both files are looked for that way. */
bool holds(const QString &folder, const QString &name)
{
    const QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    return names.contains(name, Qt::CaseInsensitive);
}

bool writeNew(const QString &path, const QString &text)
{
    return writeAtomically(path, text.toUtf8(), ReplacementRules {.onlyNew = true}).has_value();
}

} // namespace

QString IssueScaffold::readme(const QString &key)
{
    return QString::fromUtf16(IssueScaffoldTexts::rules).replace("KEY"_L1, key);
}

QString IssueScaffold::skeleton(const QString &key)
{
    return QString::fromUtf16(IssueScaffoldTexts::skeleton).replace("KEY"_L1, key);
}

QString IssueScaffold::board(const QString &projectName)
{
    return QString::fromUtf16(IssueScaffoldTexts::board).replace("PROJECT"_L1, projectName);
}

QString IssueScaffold::normalizedKey(const QString &text)
{
    QString key;
    for (const QChar c : text) {
        if (isAsciiLetter(c) || (c >= u'0' && c <= u'9')) {
            key.append(c.toUpper());
        }
    }
    return key;
}

QString IssueScaffold::suggestedKey(const QString &name)
{
    const QStringList words = wordsOf(QDir::cleanPath(name).section(u'/', -1));
    if (words.size() > 1) {
        QString key;
        for (const QString &word : words.first(qMin(words.size(), keyLength))) {
            key.append(word.front().toUpper());
        }
        return key;
    }
    if (words.size() == 1 && words.first().size() > 1) {
        return words.first().first(qMin(words.first().size(), keyLength)).toUpper();
    }
    return u"ISS"_s;
}

tl::expected<QString, QString> IssueScaffold::create(const QString &projectPath, const QString &folderName,
                                                     const QString &key, const QString &projectName)
{
    const QString folder = QDir::cleanPath(projectPath + u'/' + folderName);
    const std::filesystem::path place(QFile::encodeName(folder).toStdString());
    std::error_code error;
    std::filesystem::create_directories(place, error);
    if (!error && !std::filesystem::is_directory(place, error) && !error) {
        error = std::make_error_code(std::errc::not_a_directory);
    }
    if (error) {
        return tl::unexpected(u"폴더를 만들지 못했습니다: "_s + qt_error_string(error.value()));
    }
    if (const QString name = u"README.md"_s;
        !holds(folder, name) && !writeNew(folder + u'/' + name, readme(key))) {
        return tl::unexpected(u"README.md를 쓰지 못했습니다"_s);
    }
    if (const QString name = u"BOARD.md"_s;
        !holds(folder, name) && !writeNew(folder + u'/' + name, board(projectName))) {
        return tl::unexpected(u"BOARD.md를 쓰지 못했습니다"_s);
    }
    return folder;
}

} // namespace Vesk
