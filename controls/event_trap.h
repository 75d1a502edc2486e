#pragma once

#include <utility>

#include "message_box.h"
#include "runtime_error.h"

namespace ledgix::controls {

// Runs a handler of an event. An error that leaves it is shown in a message box, and the program goes on.
template <class Handler>
void RunHandler(Handler&& handler) {
    try {
        std::forward<Handler>(handler)();
    } catch (const runtime::RuntimeError& error) {
        runtime::ShowError(error, runtime::kProgramTitle);
    }
}

// A slot that runs a member function as a handler: connect(cmdSave, &QPushButton::clicked, this,
// Handler(this, &frmProfile::cmdSave_Click)). Arguments of the signal are dropped.
template <class Object>
auto Handler(Object* object, void (Object::*function)()) {
    return [object, function] { RunHandler([&] { (object->*function)(); }); };
}

}  // namespace ledgix::controls
