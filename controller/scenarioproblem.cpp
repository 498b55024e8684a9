#include "scenarioproblem.h"

#include <QRegularExpression>

namespace {

// Characters of a document's text that a message shows (escapes included) before it
// cuts the rest, and steps of a path: a key given twice can sit a thousand levels deep.
const int kShownLength = 40;
const int kShownSteps = 8;

QString escaped(uint code)
{
    switch (code) {
    case '"': return QStringLiteral("\\\"");
    case '\\': return QStringLiteral("\\\\");
    case '\b': return QStringLiteral("\\b");
    case '\f': return QStringLiteral("\\f");
    case '\n': return QStringLiteral("\\n");
    case '\r': return QStringLiteral("\\r");
    case '\t': return QStringLiteral("\\t");
    default: break;
    }
    if (QChar::isPrint(code))
        return QString::fromUcs4(&code, 1);
    if (QChar::requiresSurrogates(code))
        return escaped(QChar::highSurrogate(code)) + escaped(QChar::lowSurrogate(code));
    return QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
}

// A path step shown as it is: a name of letters, digits and underscores, not too long.
bool isPlainName(const QString& step)
{
    static const QRegularExpression plain(
        QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z0-9_]{1,%1}").arg(kShownLength)));
    return plain.match(step).hasMatch();
}

} // namespace

QString ScenarioProblem::quoted(const QString& text)
{
    QString shown;
    int i = 0;
    for (; i < text.size() && shown.size() < kShownLength; ++i) {
        uint code = text.at(i).unicode();
        if (QChar::isHighSurrogate(code) && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            code = QChar::surrogateToUcs4(text.at(i), text.at(i + 1));
            ++i;
        }
        shown += escaped(code);
    }
    shown = QLatin1Char('"') + shown + QLatin1Char('"');
    if (i < text.size())
        shown += QStringLiteral("... (%1 characters)").arg(text.size());
    return shown;
}

QString ScenarioProblem::text() const
{
    const QStringList shownPath = aboutKey ? QStringList(path.mid(0, path.size() - 1)) : path;
    QString where;
    for (int i = 0; i < shownPath.size(); ++i) {
        if (shownPath.size() > kShownSteps && i == kShownSteps / 2) {
            // The line tells where; the ends of the path say enough about what.
            where += QStringLiteral("[...]");
            i = shownPath.size() - kShownSteps / 2;
        }
        const QString& step = shownPath.at(i);
        // Array indices are the only steps the loader writes as bare digits.
        static const QRegularExpression index(QRegularExpression::anchoredPattern(QStringLiteral("[0-9]+")));
        if (index.match(step).hasMatch())
            where += QStringLiteral("[%1]").arg(step);
        else
            where += (where.isEmpty() ? QString() : QStringLiteral(".")) + (isPlainName(step) ? step : quoted(step));
    }
    const QString shownReason = aboutKey && !path.isEmpty() ? reason.arg(quoted(path.last())) : reason;
    return where.isEmpty() ? shownReason : where + QStringLiteral(": ") + shownReason;
}
