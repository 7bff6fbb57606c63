// Everything a host needs of Rastel.
#pragma once

#include "rastel/alpha/alpha_channel.h"
#include "rastel/alpha/dib_alpha_channel.h"
#include "rastel/display/display_manager.h"
#include "rastel/display/palette_map.h"
#include "rastel/display/primary_surface.h"
#include "rastel/image/dib.h"
#include "rastel/image/dib_section.h"
#include "rastel/platform/framework.h"
#include "rastel/platform/gdi.h"
#include "rastel/platform/kernel.h"
#include "rastel/platform/user.h"
#include "rastel/surface/dib_surface.h"
#include "rastel/surface/mmx.h"
#include "rastel/surface/surface.h"
#include "rastel/surface/surface_dc.h"
