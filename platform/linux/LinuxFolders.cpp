#include "platform/Folders.h"
