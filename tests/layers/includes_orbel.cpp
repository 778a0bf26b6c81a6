#include "Orbel/OrbelOS.h"
