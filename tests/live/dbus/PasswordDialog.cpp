// A dialog as programs have them: a field for a name, which gets the focus first, and a field for a
// password. Tab moves between them.

#include <QApplication>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget window;
    QVBoxLayout layout(&window);
    QLineEdit name;
    QLineEdit password;
    password.setEchoMode(QLineEdit::Password);
    layout.addWidget(&name);
    layout.addWidget(&password);
    window.show();
    window.activateWindow();
    name.setFocus();
    return QApplication::exec();
}
