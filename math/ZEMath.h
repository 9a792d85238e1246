#pragma once

/// \file
/// Umbrella header: every public header of the math library and of the core
/// it is built on.

#include "core/LuxCore.h"
#include "core/zeResult.h"
#include "math/meta/zeLibZEMathInit.h"
#include "math/meta/zeMathClassRegistration.h"
#include "math/meta/zeMathMetaEnums.h"
#include "math/zeMathEnums.h"
#include "math/zeMathThreshold.h"
#include "math/zeMatrix44d.h"
#include "math/zeMatrix44f.h"
#include "math/zeMultiplyAligned.h"
#include "math/zeQuaterniond.h"
#include "math/zeQuaternionf.h"
#include "math/zeVec2d.h"
#include "math/zeVec2f.h"
#include "math/zeVec3d.h"
#include "math/zeVec3f.h"
#include "math/zeVec3uc.h"
#include "math/zeVec4d.h"
#include "math/zeVec4f.h"
#include "math/zeVec4uc.h"
