#include "commandlogpanel.h"

#include "commandlogentry.h"
#include "simulatedcontroller.h"

#include <QFontDatabase>

namespace {
// Enough for several openings of a large system; older lines scroll away.
const int kMaximumLines = 20000;
}

CommandLogPanel::CommandLogPanel(QWidget* parent)
    : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("commandLogPanel"));
    setReadOnly(true);
    setMaximumBlockCount(kMaximumLines);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setLineWrapMode(QPlainTextEdit::NoWrap);
}

void CommandLogPanel::watch(SimulatedController* controller)
{
    connect(controller, &SimulatedController::commandLogged, this, &CommandLogPanel::appendEntry);
}

QString CommandLogPanel::format(const CommandLogEntry& entry)
{
    QString line = QStringLiteral("> %1\n< %2").arg(QString::fromLatin1(entry.request),
                                                   QString::fromLatin1(entry.reply.left(300)));
    if (entry.reply.size() > 300)
        line += QStringLiteral(" ... (%1 bytes)").arg(entry.reply.size());
    if (!entry.fault.isEmpty())
        line += QStringLiteral("   [fault: %1]").arg(entry.fault);
    return line;
}

void CommandLogPanel::appendEntry(const CommandLogEntry& entry)
{
    appendPlainText(format(entry));
}
