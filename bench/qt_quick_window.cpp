// The least window with Qt Quick: a rectangle and a text. qt_quick_window WIDTH HEIGHT
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>

#include <cstdlib>

int main(int count, char** words) {
    if (count != 3) return 2;
    QGuiApplication application(count, words);
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("givenWidth", std::atoi(words[1]));
    engine.rootContext()->setContextProperty("givenHeight", std::atoi(words[2]));
    engine.loadData(R"(
import QtQuick
import QtQuick.Window

Window {
    visible: true
    title: "Qt Quick"
    width: givenWidth
    height: givenHeight
    Rectangle {
        anchors.fill: parent
        color: "#3a5a78"
        Text {
            anchors.centerIn: parent
            color: "white"
            font.pixelSize: 24
            text: "A text"
        }
    }
}
)");
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
