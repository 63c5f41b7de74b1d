#pragma once
#include <QWidget>

namespace mkl {

/// What the window shows while no catalogue is open: what to do now.
class StartPage : public QWidget {
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);

Q_SIGNALS:
    void openWanted();
    void serverWanted();
    void importWanted();
};

} // namespace mkl
