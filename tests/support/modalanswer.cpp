#include "modalanswer.h"

#include <QApplication>
#include <QTimer>

namespace ModalAnswer {

void whenOpens(const std::function<void(QWidget *)> &answer)
{
    auto *poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, answer] {
        if (QWidget *modal = QApplication::activeModalWidget()) {
            poll->stop();
            poll->deleteLater();
            answer(modal);
        }
    });
    poll->start(20);
}

} // namespace ModalAnswer
