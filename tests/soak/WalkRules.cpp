#include "WalkRules.h"

#include <QRegularExpression>

#include <algorithm>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double hangMs = 100;
constexpr int moreThreads = 4;
constexpr double maxGrowth = 8.0 * 1024 * 1024;

/// How many of each kind there are.
QMap<QString, int> counts(const QStringList &kinds)
{
    QMap<QString, int> all;
    for (const QString &kind : kinds) {
        ++all[kind];
    }
    return all;
}

qint64 judgedBytes(const QuietPoint &point)
{
    return point.heap - point.conversations;
}

/// Bytes from one point to the next.
double medianSlope(const QList<QuietPoint> &points)
{
    QList<double> slopes;
    for (qsizetype i = 0; i < points.size(); ++i) {
        for (qsizetype j = i + 1; j < points.size(); ++j) {
            slopes.append(double(judgedBytes(points.at(j)) - judgedBytes(points.at(i))) /
                          double(j - i));
        }
    }
    std::sort(slopes.begin(), slopes.end());
    return slopes.isEmpty() ? 0 : slopes.at(slopes.size() / 2);
}

} // namespace

bool isHang(const Stretch &stretch)
{
    return stretch.own() > hangMs;
}

QString describe(const Stretch &stretch)
{
    return u"no event for %1 ms: computed %2 ms, waited for a processor %3 ms\n"_s
               .arg(stretch.wall, 0, 'f', 0)
               .arg(stretch.processor, 0, 'f', 0)
               .arg(stretch.queued, 0, 'f', 0) +
           stretch.stack;
}

bool isExpectedMessage(const QString &line)
{
    static const QRegularExpression expected(
        u"^(vantrel: SoftwareUpdate: In-app updates disabled: SUFeedURL is missing from Info.plist"
        "|vantrel: SuggestedQuestions: Suggestion refresh failed; keeping the previous chips: .+"
        "|vantrel: SuggestedQuestions: Suggestion refresh returned no usable questions; keeping "
        "the "
        "previous chips\\.)?$"_s);
    return expected.match(line).hasMatch();
}

QStringList findingsOf(const QList<QuietPoint> &points)
{
    const qsizetype warm = points.size() / 3;
    QMap<QString, int> mostDescriptors;
    int mostThreads = 0;
    for (const QuietPoint &point : points.first(warm)) {
        const QMap<QString, int> found = counts(point.reading.descriptors);
        for (auto it = found.cbegin(); it != found.cend(); ++it) {
            mostDescriptors[it.key()] = qMax(mostDescriptors.value(it.key()), it.value());
        }
        mostThreads = qMax(mostThreads, point.reading.threads);
    }
    QStringList findings;
    const QList<QuietPoint> judged = points.sliced(warm);
    for (const QuietPoint &point : judged) {
        const QMap<QString, int> found = counts(point.reading.descriptors);
        for (auto it = found.cbegin(); warm > 0 && it != found.cend(); ++it) {
            const int more = it.key().contains("eventfd"_L1) ? moreThreads : 0;
            if (it.value() > mostDescriptors.value(it.key()) + more) {
                findings.append(
                    u"after step %1, %2 descriptors are %3, at first at most %4"_s.arg(point.step)
                        .arg(it.value())
                        .arg(it.key())
                        .arg(mostDescriptors.value(it.key())));
            }
        }
        if (warm > 0 && point.reading.threads > mostThreads + moreThreads) {
            findings.append(
                u"after step %1 there are %2 threads, at first at most %3"_s.arg(point.step)
                    .arg(point.reading.threads)
                    .arg(mostThreads));
        }
    }
    const double growth = medianSlope(judged) * double(judged.size() - 1);
    if (judged.size() > 3 && growth > maxGrowth) {
        findings.append(u"what is allocated on the picker grew by %1 MB"_s.arg(growth / 1024 / 1024,
                                                                               0, 'f', 1));
    }
    return findings;
}

} // namespace vantrel::test
