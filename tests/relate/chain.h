#pragma once

#include "build/curves.h"
