// Temporary folders are the same in tests.
#pragma once

#include "platform/temporary_folder.h"
