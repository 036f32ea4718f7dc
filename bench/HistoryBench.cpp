// Listing 1,000 conversations of together 1 GB by their titles, against cat reading the same files.
#include "bench/Rounds.h"
#include "claude/TranscriptFolders.h"
#include "sessions/SessionScan.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

namespace
{

using namespace Vesk;

constexpr int transcriptCount = 1000;
constexpr qsizetype transcriptBytes = 1024 * 1024;

/** A conversation as the agent keeps it: messages, tools with output, and the title only when it is long
   over, so that every byte has to be looked at. */
QByteArray transcript(int number)
{
    const QByteArray id = QByteArray::number(number);
    const QByteArray common =
        R"("parentUuid":"5f0c6a0e","isSidechain":false,"userType":"external","cwd":"/src/bench",)"
        R"("sessionId":"c)"
        + id + R"(","version":"2.1.0","gitBranch":"main",)";
    QByteArray text = R"({"type":"mode","mode":"default"})"
                      "\n"
                      R"({"type":"user",)"
        + common + R"("message":{"role":"user","content":"결제 웹훅 )" + id
        + R"(번을 고쳐줘"},"timestamp":"2026-11-20T09:00:00.000Z"})"
          "\n";
    QByteArray output;
    for (int line = 0; line < 40; ++line)
        output += "src/billing/Webhook" + QByteArray::number(line)
            + R"(.cpp:120:  if (event.isTitle()) return \"이미 처리함\";\n)";
    for (int call = 0; text.size() < transcriptBytes; ++call) {
        const QByteArray use = "toolu_" + QByteArray::number(call);
        text += R"({"type":"assistant",)" + common
            + R"("message":{"model":"m","role":"assistant","content":[{"type":"text","text":"다음 파일을 읽습니다."},)"
              R"({"type":"tool_use","id":")"
            + use
            + R"(","name":"Grep","input":{"pattern":"isTitle"}}],)"
              R"("usage":{"input_tokens":12,"output_tokens":80}},"timestamp":"2026-11-20T09:00:01.000Z"})"
              "\n";
        text += R"({"type":"user",)" + common
            + R"("message":{"role":"user","content":[{"type":"tool_result","tool_use_id":")" + use
            + R"(","content":")" + output
            + R"("}]},"timestamp":"2026-11-20T09:00:02.000Z"})"
              "\n";
    }
    return text + R"({"type":"ai-title","aiTitle":"결제 웹훅 )" + id
        + R"("})"
          "\n";
}

/** Lists everything; how many conversations have their written title. */
int list(SessionScan &scan, const QString &root, const QString &project)
{
    int titled = 0;
    QEventLoop loop;
    QObject::connect(&scan, &SessionScan::found, &loop, [&](const QList<ResumableSession> &sessions) {
        for (const ResumableSession &session : sessions)
            titled += session.title.startsWith(QStringLiteral("결제 웹훅")) && !session.title.contains(u'번');
    });
    QObject::connect(&scan, &SessionScan::finished, &loop, &QEventLoop::quit);
    scan.start(root, QStringLiteral("bench"), project);
    loop.exec();
    return titled;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir home;
    const QString root = TranscriptFolders::root(home.path());
    const QString project = QStringLiteral("/src/bench");
    const QString folder = root + u'/' + TranscriptFolders::encodedName(project);
    QDir().mkpath(folder);
    QStringList files;
    qint64 bytes = 0;
    for (int number = 0; number < transcriptCount; ++number) {
        QFile file(folder + QStringLiteral("/c%1.jsonl").arg(number));
        if (!file.open(QIODevice::WriteOnly) || file.write(transcript(number)) < transcriptBytes) {
            std::printf("cannot write %s\n", qPrintable(file.fileName()));
            return 1;
        }
        bytes += file.size();
        files << file.fileName();
    }
    std::printf("%d transcripts, %lld bytes\n", transcriptCount, static_cast<long long>(bytes));

    bool complete = true;
    const bool ratioMet = Bench::compare(
        "listing past conversations", "cat", 7, 1.5,
        [&] {
            SessionScan scan;
            complete &= list(scan, root, project) == transcriptCount;
        },
        [&] {
            QProcess cat;
            cat.setStandardOutputFile(QProcess::nullDevice());
            cat.start(QStringLiteral("cat"), files);
            cat.waitForFinished(-1);
        });

    SessionScan scan;
    list(scan, root, project);
    std::vector<double> again;
    for (int round = 0; round < 7; ++round) {
        const double start = Bench::now();
        complete &= list(scan, root, project) == transcriptCount;
        again.push_back((Bench::now() - start) * 1000);
    }
    const bool againMet = Bench::report("listing again, nothing changed", Bench::median(again), "ms", 50);
    if (!complete)
        std::printf("not every title was found\n");
    return ratioMet && againMet && complete ? 0 : 1;
}
