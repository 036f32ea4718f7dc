// The values behind Theme: every colour of both themes, and the fonts of one text size.
#pragma once

#include <QColor>
#include <QFont>
#include <QList>

namespace Vesk
{

/** The colours of one theme. */
struct ThemeColors {
    // Surfaces and edges.
    QColor canvas, panel, raised, mine, hover, selected, well, line, line2, lineCtl;
    // Text, state, and what is filled with a state's colour.
    QColor text, text2, text3, textOff;
    QColor accent, accentSoft, onAccent, accentFill, accentHover;
    QColor success, warning, danger, info, wait, onWait, waitFill, waitLine;
    QColor successSoft, warningSoft, dangerSoft, infoSoft, waitSoft, dangerFill, dangerHover;
    QColor gaugeLow, gaugeWarn, gaugeFull, gaugeReset, gaugeTrack;
    QColor shadow, scrim;
    // Of a difference: ground, sign and changed words of a line, and the header above some of them.
    QColor diffAdded, diffAddedMark, diffAddedWords, diffRemoved, diffRemovedMark, diffRemovedWords;
    QColor diffHunk, diffHunkText;
    /** In the order of AgentPermissionMode. */
    QList<QColor> modes;
    /** In the order of IssueStatus::Kind. */
    QList<QColor> statuses;
    /** Eight colours whose neighbours stay apart for every kind of sight. */
    QList<QColor> lanes;
};

/** The colours of the dark or the light theme. */
[[nodiscard]] const ThemeColors &themeColors(bool dark);

/** The fonts at one text size. */
struct ThemeFonts {
    QFont pageTitle, issueTitle, section, reading, readingBold, ui, uiBold, uiStruck, secondary,
        secondaryBold, meta, metaBold;
    QFont code, codeBold, codeSmall, codeSmallBold, codeEditor;
};

/** The fonts at `scale` (1 is the plain size); needs a QGuiApplication. */
[[nodiscard]] ThemeFonts themeFonts(qreal scale);

} // namespace Vesk
