#include "cleaner/CleanerService.h"
