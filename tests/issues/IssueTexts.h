// Random texts made of what issue files and boards are made of.
#pragma once

#include <QString>

#include <rapidcheck.h>

#include <string>
#include <vector>

/** Any number of these pieces, one after another. */
inline QString piecedText(const std::vector<std::string> &pieces)
{
    QString text;
    for (const auto &piece : *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(pieces)))
        text += QString::fromStdString(piece);
    return text;
}

/** Pieces of both kinds of file, well-formed lines and their splinters. */
inline QString issueText()
{
    static const std::vector<std::string> pieces {
        "\n",
        "\r\n",
        " ",
        "\t",
        "|",
        "`",
        "**",
        "~~",
        "```\n",
        "# A-1 · x\n",
        "## M1 (6월)\n",
        "### 작은\n",
        "| 항목 | 값 |\n",
        "|---|---|\n",
        "| 상태 | `doing` — 메모 |\n",
        "| 상태 | 진행 중 (QA) |\r\n",
        "| 선행 | ~~A-1~~, [A-2](a.md) · B-3 (대기) |\n",
        "| 마일스톤 | M1 |\n",
        "- [x] 끝\n",
        "- [ ]",
        "| ID | 제목 | 상태 |\n|---|---|---|\n",
        "| [A-1](a.md) | 제목 | `todo` |\n",
        "| A-2 | 제목 | doing (메모) |\r\n",
        "| b-3 | 제목 | — |\n",
        "| # | 우선 | state | p |\n|--|:-:|--|--|\n| A-9 | P0 | 설계 — x | |\n",
        "| 상태 | 개수 |\n|---|---|\n| done | 3 |\n| `설계` | **1** |\n",
        "[",
        "](",
        ")",
        "—",
        "(",
        "글",
        "\u0967",
    };
    return piecedText(pieces);
}
