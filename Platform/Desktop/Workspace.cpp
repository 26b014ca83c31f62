#include "Platform/Desktop/Workspace.h"
