// A smooth line, one pixel wide, into any device context.
#pragma once

#include "rastel/platform/gdi.h"

// Co-ordinates are pixels of the context; a whole number is the middle of one. The start is drawn and the end is not,
// so that lines joined end to start don't paint the joint twice. Each step along the longer side paints the two pixels
// beside the line, each as far as the line is near. Reads the pixels before it writes them: nobody else may draw on the
// context meanwhile. Ends that are no numbers, or too far off for an int, draw nothing.
RASTEL_API void AALine(HDC hDC, double x1, double y1, double x2, double y2, DWORD color);   // 0x00BBGGRR
