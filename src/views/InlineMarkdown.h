#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace vantrel {

/// A part of a text that does not look like the rest of it.
struct ProseSpan
{
    qsizetype start = 0;
    qsizetype length = 0;
    bool isEmphasised = false;
    bool isStrong = false;
    bool isCode = false;

    bool operator==(const ProseSpan &) const = default;
};

/// A text as it is read, without the marks that it was written with, and how its parts look.
struct Prose
{
    QString text{};
    QList<ProseSpan> spans{}; ///< In order, apart from one another, none empty.

    bool operator==(const Prose &) const = default;
};

/// Reads what a model wrote as inline Markdown, by the rules of CommonMark for emphasis, code spans
/// and backslashes.
///
/// The result is characters and looks, never markup: nothing in it can name a picture or lead
/// anywhere. A link or an image stands as its words with the address behind them in parentheses.
/// Entities, HTML and the marks of headings, lists, quotes and tables stay the characters that were
/// typed. Every line stays a line; those of a fenced block are code, and the fences go. A mark
/// without its partner, as at the end of a text that is still coming, stands as it is.
/// Cost: linear.
[[nodiscard]] Prose inlineMarkdown(const QString &source);

} // namespace vantrel
