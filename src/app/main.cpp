#include "app/BrivaneApp.h"

#include <QGuiApplication>

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    brivane::BrivaneApp::prepareProcess();
    brivane::BrivaneApp app(brivane::Host::shared());
    if (!app.open())
        return 1;
    return QGuiApplication::exec();
}
