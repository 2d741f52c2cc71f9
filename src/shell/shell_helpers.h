// All shell helper routines in one include.
#pragma once

#include "shell/date_convert.h"
#include "shell/folder_size.h"
#include "shell/path_text.h"
#include "shell/resource_strings.h"
#include "shell/show_error.h"
#include "shell/shell_folders.h"
