#pragma once

namespace solvane {

/// The property by which an automation server says that it serves no other client. Asked for by its name,
/// since an interface of our own would need a proxy that is registered. A server that is not ours does not
/// have it, and is taken as one that clients share, as Matlab's is.
inline constexpr wchar_t dedicatedServerProperty[] = L"SolvaneDedicatedServer";

} // namespace solvane
