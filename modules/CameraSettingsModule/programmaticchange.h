#ifndef PROGRAMMATICCHANGE_H
#define PROGRAMMATICCHANGE_H

#include "ChangeTrackingStandardItemModel.h"

// While it lives, the page or dialog itself changes its controls and its table, not the
// operator: the "operator" flag is off, and the given table records nothing. The flag is
// restored rather than set, so that a refresh inside another keeps it off; the table
// records again afterwards, as every load and refresh leaves it.
class ProgrammaticChange
{
public:
    explicit ProgrammaticChange(bool& userAction, ChangeTrackingStandardItemModel* table = nullptr)
        : m_flag(userAction), m_old(userAction), m_table(table)
    {
        m_flag = false;
        if (m_table)
            m_table->setChangeRecordingActive(false);
    }
    ~ProgrammaticChange()
    {
        m_flag = m_old;
        if (m_table)
            m_table->setChangeRecordingActive(true);
    }
    ProgrammaticChange(const ProgrammaticChange&) = delete;
    ProgrammaticChange& operator=(const ProgrammaticChange&) = delete;

private:
    bool& m_flag;
    bool m_old;
    ChangeTrackingStandardItemModel* m_table;
};

#endif // PROGRAMMATICCHANGE_H
