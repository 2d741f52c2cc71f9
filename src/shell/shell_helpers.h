// All shell helper routines in one include.
#pragma once

#include "nxfv/shell/date_convert.h"
#include "nxfv/shell/folder_size.h"
#include "nxfv/shell/path_text.h"
#include "nxfv/shell/resource_strings.h"
#include "nxfv/shell/show_error.h"
#include "nxfv/shell/shell_folders.h"
