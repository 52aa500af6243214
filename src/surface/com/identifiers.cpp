// The identifiers of the type library, the interface and the class, as the interface's description
// gives them, are defined here and declared everywhere else.
#include <initguid.h>
// Behind it, to be made definitions.
#include "client20_interface.h"
