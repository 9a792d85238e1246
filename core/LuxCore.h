#pragma once

/// \file
/// Umbrella header: every public header of the core object model.

#include "core/BayCore.h"
#include "core/LuxCoreExport.h"
#include "core/__internalObjectList.h"
#include "core/zeBayRegister.h"
#include "core/zeClassRegistration.h"
#include "core/zeDirectory.h"
#include "core/zeDoubleMetaField.h"
#include "core/zeEnumMetaField.h"
#include "core/zeFloatMetaField.h"
#include "core/zeIntMetaField.h"
#include "core/zeInternalStringPool.h"
#include "core/zeLibrary.h"
#include "core/zeMemoryPool.h"
#include "core/zeMetaEnum.h"
#include "core/zeMetaField.h"
#include "core/zeMetaObject.h"
#include "core/zeObject.h"
#include "core/zeResult.h"
#include "core/zeSmartPointer.h"
#include "core/zeStringPoolContainer.h"
