#pragma once
// The window thread's handlers, for the sources of Connection alone. Any thread may ask for those of its own.

#include "ado/Connection.h"

namespace ADODB {

WaitHandler WaitHandlerOfThisThread();   // empty where this thread has none
ApartHandler ApartHandlerOfThisThread(); // the same
bool IsWindowThread();                   // this thread has one of them

} // namespace ADODB
