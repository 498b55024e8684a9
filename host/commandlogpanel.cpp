#include "commandlogpanel.h"

#include "controllerexchange.h"
#include "controllersession.h"

#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

namespace {
// Replies beyond this are cut in the log; the length says how much there was.
const int kShownReplyBytes = 300;

QString headingLine(const QString& text)
{
    return QStringLiteral("==== %1 ====").arg(text);
}
} // namespace

CommandLogPanel::CommandLogPanel(QWidget* parent)
    : QWidget(parent),
      m_filter(new QLineEdit),
      m_text(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("commandLogPanel"));

    m_filter->setObjectName(QStringLiteral("commandLogFilter"));
    m_filter->setPlaceholderText(tr("Filter, such as flash_intensity or err"));
    // No clear button: Qt 5.15 leaks its fade animation when the window closes mid-fade.
    connect(m_filter, &QLineEdit::textChanged, this, &CommandLogPanel::rebuild);

    auto* clear = new QPushButton(tr("Clear"));
    clear->setObjectName(QStringLiteral("commandLogClear"));
    clear->setToolTip(tr("Forget every line logged so far"));
    connect(clear, &QPushButton::clicked, this, [this] {
        if (m_session)
            m_session->clearTraffic();
    });
    auto* save = new QPushButton(tr("Save..."));
    save->setObjectName(QStringLiteral("commandLogSave"));
    save->setToolTip(tr("Save the lines shown to a text file"));
    connect(save, &QPushButton::clicked, this, &CommandLogPanel::askWhereToSave);

    m_text->setObjectName(QStringLiteral("commandLogText"));
    m_text->setReadOnly(true);
    m_text->setMaximumBlockCount(ControllerSession::MaximumTraffic);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);

    auto* tools = new QHBoxLayout;
    tools->addWidget(m_filter, 1);
    tools->addWidget(clear);
    tools->addWidget(save);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(tools);
    layout->addWidget(m_text);
}

void CommandLogPanel::watch(ControllerSession* session)
{
    m_session = session;
    connect(session, &ControllerSession::exchanged, this, &CommandLogPanel::appendExchange);
    connect(session, &ControllerSession::logRewritten, this, &CommandLogPanel::rebuild);
    rebuild();
}

QString CommandLogPanel::format(const ControllerExchange& exchange)
{
    QString line = QStringLiteral("%1 %2 ms  > %3  < %4")
                       .arg(exchange.sent.toString(QStringLiteral("HH:mm:ss.zzz")))
                       .arg(double(exchange.roundTripNs) / 1e6, 9, 'f', 3)
                       .arg(QString::fromLatin1(exchange.request),
                            QString::fromLatin1(exchange.reply.left(kShownReplyBytes)));
    if (exchange.reply.size() > kShownReplyBytes)
        line += QStringLiteral(" ... (%1 bytes)").arg(exchange.reply.size());
    if (!exchange.fault.isEmpty())
        line += QStringLiteral("   [fault: %1]").arg(exchange.fault);
    return line;
}

QStringList CommandLogPanel::lines(const ControllerSession& session, const QString& filter)
{
    const QVector<ControllerExchange>& traffic = session.traffic();
    const QVector<ControllerSession::Heading>& headings = session.headings();
    QStringList lines;
    int heading = 0;
    for (int i = 0; i <= traffic.size(); ++i) {
        for (; heading < headings.size() && headings.at(heading).before == i; ++heading)
            lines << headingLine(headings.at(heading).text);
        if (i == traffic.size())
            break;
        const QString line = format(traffic.at(i));
        if (line.contains(filter, Qt::CaseInsensitive))
            lines << line;
    }
    return lines;
}

QString CommandLogPanel::text() const
{
    return m_text->toPlainText();
}

bool CommandLogPanel::saveTo(const QString& fileName, QString* error) const
{
    QSaveFile file(fileName);
    const QString text = m_text->toPlainText();
    const QByteArray bytes = text.isEmpty() ? QByteArray() : text.toUtf8() + '\n';
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text) || file.write(bytes) != bytes.size() || !file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

void CommandLogPanel::appendExchange(const ControllerExchange& exchange)
{
    const QString line = format(exchange);
    if (line.contains(m_filter->text(), Qt::CaseInsensitive))
        m_text->appendPlainText(line);
}

void CommandLogPanel::rebuild()
{
    m_text->setPlainText(m_session ? lines(*m_session, m_filter->text()).join(QLatin1Char('\n')) : QString());
    // The newest line in sight, from its start: lines are long and do not wrap.
    m_text->moveCursor(QTextCursor::End);
    m_text->moveCursor(QTextCursor::StartOfLine);
}

void CommandLogPanel::askWhereToSave()
{
    const QString fileName = QFileDialog::getSaveFileName(this, tr("Save command log"), QStringLiteral("command-log.txt"),
                                                          tr("Text files (*.txt);;All files (*)"));
    if (fileName.isEmpty())
        return;
    QString error;
    if (!saveTo(fileName, &error))
        QMessageBox::warning(this, tr("Save command log"), tr("Cannot save %1: %2").arg(fileName, error));
}
