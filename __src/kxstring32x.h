// String and message helpers: the declarations, with the framework's types complete.
#pragma once

#include "kxframework.h"
#include "kxova/helpers.h"
