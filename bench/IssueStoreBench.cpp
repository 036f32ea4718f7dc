// Reading an issue folder: 5,000 issues of 10 KB with board and graph, against cat and md4c over the same
// bytes; and 500 issues again after one of them has changed.
#include "bench/Rounds.h"
#include "core/Preferences.h"
#include "issues/IssueFolderPreference.h"
#include "issues/IssueStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <md4c.h>

#include <cstdio>

namespace
{

using namespace Vesk;

constexpr int issueCount = 5000;
constexpr int smallCount = 500;
constexpr qsizetype issueBytes = 10 * 1024;
constexpr int milestoneSize = 50;
constexpr double reloadLimitMs = 30;
constexpr double ratioLimit = 3;

QByteArray idOf(int number)
{
    return "ISSUE-" + QByteArray::number(number).rightJustified(4, '0');
}

/** An issue as people and agents write it; it waits for two before it, and holds up two behind it. */
QByteArray issueText(int number)
{
    const auto reference = [](int other) {
        return other < 1 || other > issueCount ? QByteArray("—") : '`' + idOf(other) + '`';
    };
    QByteArray text = "# " + idOf(number)
        + " · 결제 웹훅을 다시 보내면 두 번 처리된다\n\n| 항목 | 값 |\n|---|---|\n"
          "| 상태 | `"
        + (number % 3 == 0 ? "done" : "todo")
        + "` — 디자인 대기 |\n| 영역 | backend |\n| 우선순위 | P1 |\n"
          "| 마일스톤 | M"
        + QByteArray::number(number / milestoneSize)
        + " |\n| 추정 | 3d |\n"
          "| 선행 | "
        + reference(number - 1) + " · " + reference(number - 7)
        + " |\n"
          "| 후행 | "
        + reference(number + 1) + " · " + reference(number + 7)
        + " |\n\n"
          "## 배경\n결제사가 같은 웹훅을 **다시** 보낸다. [문서](docs/webhook.md)에 순서가 있다.\n\n## 할 일\n";
    for (int task = 0; text.size() < issueBytes; ++task) {
        text += task % 2 == 0 ? "- [x] " : "- [ ] ";
        text += "`Webhook.cpp`의 멱등 키를 저장하고 두 번째 요청에는 200을 돌려준다 — 로그에 남긴다\n";
        if (task % 20 == 19)
            text += "\n```cpp\nif (seen.contains(key)) { return ok(); }\n```\n\n## 단계 "
                + QByteArray::number(task) + '\n';
    }
    return text;
}

QByteArray boardText(int count)
{
    QByteArray text = "# 이슈 보드\n\n## 요약\n| 상태 | 개수 |\n|---|---|\n| `todo` | 0 |\n";
    for (int number = 1; number <= count; ++number) {
        if (number == 1 || number % milestoneSize == 0)
            text += "\n## M" + QByteArray::number(number / milestoneSize)
                + " (6월)\n\n| ID | 제목 | 영역 | 상태 |\n|---|---|---|---|\n";
        text += "| [" + idOf(number) + "](" + idOf(number) + ".md) | 결제 웹훅 | backend | `todo` |\n";
    }
    return text;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write the issues");
}

/** A folder of issues, chosen as that of the project `path`. */
QStringList fill(const QString &path, int count, Preferences &preferences)
{
    QDir().mkpath(path);
    QStringList names;
    for (int number = 1; number <= count; ++number) {
        names.append(QString::fromLatin1(idOf(number)) + QStringLiteral(".md"));
        write(path + u'/' + names.last(), issueText(number));
    }
    write(path + QStringLiteral("/BOARD.md"), boardText(count));
    IssueFolderPreference::setFolder(path, path, preferences);
    return names;
}

int ignoreBlock(MD_BLOCKTYPE, void *, void *)
{
    return 0;
}
int ignoreSpan(MD_SPANTYPE, void *, void *)
{
    return 0;
}
int ignoreText(MD_TEXTTYPE, const MD_CHAR *, MD_SIZE, void *)
{
    return 0;
}

void parseAll(const QList<QByteArray> &texts)
{
    MD_PARSER parser {};
    parser.flags = MD_DIALECT_GITHUB;
    parser.enter_block = ignoreBlock;
    parser.leave_block = ignoreBlock;
    parser.enter_span = ignoreSpan;
    parser.leave_span = ignoreSpan;
    parser.text = ignoreText;
    for (const QByteArray &text : texts)
        md_parse(text.constData(), static_cast<MD_SIZE>(text.size()), &parser, nullptr);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    Preferences preferences(folder.filePath(QStringLiteral("preferences.ini")));

    const QString large = folder.filePath(QStringLiteral("large"));
    const QStringList names = fill(large, issueCount, preferences);
    QList<QByteArray> texts;
    for (int number = 1; number <= issueCount; ++number)
        texts.append(issueText(number));

    bool met = Bench::compare(
        "5,000 issues, board and graph", "cat and md4c", 5, ratioLimit,
        [&] {
            const IssueStore store(large, preferences);
            if (store.items().size() != issueCount || store.graph().nodes.size() != issueCount)
                qFatal("not all issues were read");
        },
        [&] {
            QProcess cat;
            cat.setWorkingDirectory(large);
            cat.setStandardOutputFile(QProcess::nullDevice());
            cat.start(QStringLiteral("cat"), names);
            cat.waitForFinished();
            parseAll(texts);
        });

    const QString small = folder.filePath(QStringLiteral("small"));
    fill(small, smallCount, preferences);
    IssueStore store(small, preferences);
    std::vector<double> times;
    for (int round = 0; round < 20; ++round) {
        write(small + QStringLiteral("/ISSUE-0250.md"),
              issueText(round % 2 == 0 ? 250 : 251).replace("ISSUE-0251 ·", "ISSUE-0250 ·"));
        const double start = Bench::now();
        store.reload();
        times.push_back((Bench::now() - start) * 1000);
    }
    met = Bench::report("500 issues, read again after one change", Bench::median(times), "ms", reloadLimitMs)
        && met;
    return met ? 0 : 1;
}
