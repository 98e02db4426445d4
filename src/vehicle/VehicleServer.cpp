#include "vehicle/VehicleServer.h"
