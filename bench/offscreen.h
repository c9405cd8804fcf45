#pragma once

#include <QApplication>
#include <QTemporaryDir>

#include <memory>

/// The application of a benchmark: no screen, the fonts of the workstation, a home folder that
/// nobody lives in.
class Offscreen final
{
public:
    Offscreen(int &argc, char *argv[]);
    ~Offscreen();
    Offscreen(const Offscreen &) = delete;
    Offscreen &operator=(const Offscreen &) = delete;

private:
    QTemporaryDir m_home;
    std::unique_ptr<QApplication> m_application;
};
