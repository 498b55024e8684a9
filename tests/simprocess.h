#ifndef SIMPROCESS_H
#define SIMPROCESS_H

// quarvo2-sim as a process of its own on a loopback port, killed when the test is done
// with it, whatever happened in between.
#include "scratchfile.h"

#include <QProcess>
#include <QRegularExpression>

class SimProcess
{
public:
    ~SimProcess() { kill(); }

    // Starts on the port (0: a free one), the extra arguments first, on a scenario given as
    // JSON text if any, and waits for the line that says where it listens.
    bool start(const QStringList& arguments = QStringList(), quint16 port = 0, const QByteArray& scenario = QByteArray())
    {
        QStringList all = QStringList(arguments) << "--listen" << QStringLiteral("127.0.0.1:%1").arg(port);
        if (!scenario.isEmpty())
            all << "--scenario" << scratchFile(m_dir, QStringLiteral("scenario.json"), scenario);
        m_process.start(QStringLiteral(QUARVO_BIN_DIR "/quarvo2-sim"), all);
        while (m_process.waitForStarted(10000) && !m_process.canReadLine() && m_process.waitForReadyRead(10000)) {
        }
        m_firstLine = QString::fromLocal8Bit(m_process.readLine()).trimmed();
        static const QRegularExpression listening(QStringLiteral("^listening on 127\\.0\\.0\\.1:(\\d+),"));
        m_port = quint16(listening.match(m_firstLine).captured(1).toUInt());
        return m_port != 0;
    }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(10000);
    }

    quint16 port() const { return m_port; }
    QString address() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    QString firstLine() const { return m_firstLine; }
    QProcess& process() { return m_process; }

private:
    QProcess m_process;
    QTemporaryDir m_dir;
    QString m_firstLine;
    quint16 m_port = 0;
};

#endif // SIMPROCESS_H
