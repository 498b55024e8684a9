#ifndef COMMANDLOGPANEL_H
#define COMMANDLOGPANEL_H

#include <QPlainTextEdit>

struct CommandLogEntry;
class SimulatedController;

// Shows the controller's command log live: each request with its reply.
class CommandLogPanel : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit CommandLogPanel(QWidget* parent = nullptr);

    void watch(SimulatedController* controller);
    // One entry as the panel and the headless run print it.
    static QString format(const CommandLogEntry& entry);

public slots:
    void appendEntry(const CommandLogEntry& entry);
};

#endif // COMMANDLOGPANEL_H
