// The families of operations, one file each.
#pragma once

namespace rastel::bench {

class Suite;

void AddCopy(Suite& suite);
void AddFill(Suite& suite);
void AddKeyCopy(Suite& suite);
void AddShadow(Suite& suite);
void AddStretch(Suite& suite);
void AddPlaneValues(Suite& suite);
void AddPlaneMasks(Suite& suite);
void AddBlendPlane(Suite& suite);
void AddBlendConstant(Suite& suite);
void AddBlendComposite(Suite& suite);
void AddFilters(Suite& suite);
void AddTriangles(Suite& suite);
void AddRotations(Suite& suite);
void AddText(Suite& suite);
void AddFirstText(Suite& suite);
void AddExchange(Suite& suite);
void AddIcons(Suite& suite);
void AddConvert(Suite& suite);
void AddPresent(Suite& suite);

}   // namespace rastel::bench
