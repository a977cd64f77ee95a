// The least that a Qt program needs until its window stands; start.py compares the editor with it.

#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  window.resize(1000, 700);
  window.show();
  return QApplication::exec();
}
