#pragma once

#include <functional>

class QWidget;

// Answers modal dialogs that a test opens: the blocking exec() returns once answered.
namespace ModalAnswer {

// Calls answer with the next modal dialog, as soon as it is open.
void whenOpens(const std::function<void(QWidget *)> &answer);

} // namespace ModalAnswer
