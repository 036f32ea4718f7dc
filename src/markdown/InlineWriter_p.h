// Writes the inline HTML of one block.
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace Vesk
{

/** Takes what stands in a line of text, in order, and makes the safe HTML of MarkdownBlock from it. */
class InlineWriter
{
public:
    /** Running text; addresses of web pages in it become links. */
    void text(QStringView text);
    /** Text of inline code: shown as it is. */
    void code(QStringView text);
    void lineBreak();

    /** A tag of the white list without attributes: "b", "i", "s" or "code". */
    void openTag(QLatin1StringView name);
    void openLink(const QString &address);
    void openImage(const QString &address);
    /** Closes what was opened last. */
    void close();

    /** The HTML so far; the writer is empty again. */
    [[nodiscard]] QString take();
    void clear();

    /** How much has been written. */
    [[nodiscard]] qsizetype size() const { return m_html.size(); }
    /** The HTML so far, whole in itself; tags that are open go on in what follows. Empty where it cannot be
       cut: within a link or a picture. */
    [[nodiscard]] QString cut();

private:
    enum class Role { Silent, Tag, Link, DroppedLink, Image };
    struct Span {
        Role role = Role::Silent; // Silent: opened too deep or within a picture's text, leaves no trace
        QLatin1StringView tag;
        QString address;
        qsizetype begin = 0; // where its content starts in m_html
        bool linked = false;
    };

    void open(Span span);
    void closeLink(const Span &span);
    void closeImage(const Span &span);
    void writeAutolinked(QStringView text);
    void writeAddressTag(QStringView address);

    QString m_html;
    std::vector<Span> m_spans;
    int m_links = 0;
    int m_images = 0;
};

} // namespace Vesk
