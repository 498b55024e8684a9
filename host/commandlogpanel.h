#ifndef COMMANDLOGPANEL_H
#define COMMANDLOGPANEL_H

#include <QStringList>
#include <QWidget>

class ControllerSession;
class QLineEdit;
class QPlainTextEdit;
struct ControllerExchange;

// Shows the host's traffic with its controller live: one line per exchange with the
// time it went out, the round trip, the request and the reply, and a heading line per
// opening of a module dialog. The operator filters it, clears it and saves it.
class CommandLogPanel : public QWidget
{
    Q_OBJECT

public:
    explicit CommandLogPanel(QWidget* parent = nullptr);

    void watch(ControllerSession* session);
    // One exchange as the panel and the headless run print it.
    static QString format(const ControllerExchange& exchange);
    // The session's whole log, headings included; with a filter only the exchanges
    // whose line holds it (any case), and the headings, which tell the openings apart.
    static QStringList lines(const ControllerSession& session, const QString& filter = QString());

    // What the panel shows now.
    QString text() const;
    bool saveTo(const QString& fileName, QString* error) const;

private slots:
    void appendExchange(const ControllerExchange& exchange);
    void rebuild();
    void askWhereToSave();

private:
    ControllerSession* m_session = nullptr;
    QLineEdit* m_filter;
    QPlainTextEdit* m_text;
};

#endif // COMMANDLOGPANEL_H
