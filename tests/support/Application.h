#pragma once

#include <QCoreApplication>

/// An event loop for the time of one test.
class Application
{
public:
    /// Everything that is due now happens.
    static void onePass() { QCoreApplication::processEvents(); }

private:
    int m_count = 1;
    char m_name[8] = "vantora";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_arguments};
};
