#pragma once

namespace Lux {

/// Directory of the objects of a file being read or written. Opaque here:
/// field text conversions receive it and ignore it.
class zeDirectory;

}  // namespace Lux
