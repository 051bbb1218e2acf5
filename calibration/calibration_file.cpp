#include "calibration/calibration_file.h"
