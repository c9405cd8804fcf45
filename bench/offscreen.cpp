#include "offscreen.h"

#include <QFont>

namespace {

constexpr int textPixels = 13; // as the workstation's own

} // namespace

Offscreen::Offscreen(int &argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("HOME", m_home.path().toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", m_home.path().toLocal8Bit());
    m_application = std::make_unique<QApplication>(argc, argv);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(textPixels);
    QApplication::setFont(font);
}

Offscreen::~Offscreen() = default;
