// The name of a conversation, found in its transcript without keeping the transcript.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace Vesk
{

/** How much of a text becomes a title, in characters. */
inline constexpr qsizetype maxTitleCharacters = 60;

/** A transcript beyond this is not read as a whole. */
inline constexpr qsizetype maxTranscriptBytes = 8 * 1024 * 1024;

/**
 * Looks for the title in a transcript that arrives piece by piece: the title that the agent program wrote, at
 * once wherever it stands; else what the person said first, which is known for certain only at the end.
 *
 * Bytes are read straight into its buffer, in which only the line under construction stays. Once there is a
 * candidate, everything but a written title is passed over without being parsed. A line beyond
 * `maxTranscriptBytes` is skipped. One scan serves file after file.
 */
class TitleScan
{
public:
    static constexpr qsizetype chunkBytes = 65'536;

    TitleScan();
    ~TitleScan();
    Q_DISABLE_COPY_MOVE(TitleScan)

    /** Begins a new file. */
    void reset();
    /** Where the next bytes go: room for `chunkBytes`. Holds until take(). */
    [[nodiscard]] char *room();
    /** Takes in that many bytes of room(). True when the title is found and no more needs to be read. */
    bool take(qsizetype bytes);
    /** The end of the file: the title, or absent. */
    [[nodiscard]] std::optional<QString> finish();

private:
    struct Parser;

    bool lookThroughLines();
    bool lookForWrittenTitle(qsizetype end);
    bool readLine(qsizetype begin, qsizetype end);
    void dropReadLines();

    std::unique_ptr<Parser> m_parser;
    QByteArray m_buffer; // [m_begin, m_end) is what has not been read; padding lies behind it
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
    qsizetype m_looked = 0;  // before it no written title begins, or no line ends
    bool m_skipping = false; // inside the rest of an overlong line
    std::optional<QString> m_written;
    std::optional<QString> m_candidate;
};

/** The title of a transcript file; absent without one. An input error ends the scan with what it has, and so
    does `isCancelled`, asked once a chunk. */
[[nodiscard]] std::optional<QString> quickTitle(const QString &path, TitleScan &scan,
                                                const std::function<bool()> &isCancelled = {});
[[nodiscard]] std::optional<QString> quickTitle(const QString &path);

/** What the person said first, as a title; absent without it, and beyond `maxTranscriptBytes`. */
[[nodiscard]] std::optional<QString> firstUserMessage(const QString &path);

} // namespace Vesk
