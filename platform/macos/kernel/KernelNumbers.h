#pragma once

#include <cstdint>

/// The kernel's numbers for what it is asked; `darwin/DarwinRecords.cpp` compares them with its headers.
namespace tolvane::machost {

/// Flavours of `pidInfo`.
inline constexpr int listDescriptors = 1;
inline constexpr int shortBSDInfo = 3;
inline constexpr int vnodePaths = 9;
/// Flavours of `descriptorInfo`.
inline constexpr int socketInfo = 3;
inline constexpr int resourceUsageVersion = 6;

inline constexpr std::uint32_t socketDescriptor = 2;
inline constexpr int tcpSocket = 2;
inline constexpr int listeningState = 1;

inline constexpr int kernelName = 1;
inline constexpr int argumentsName = 49;

inline constexpr int taskMemoryFlavour = 22;
inline constexpr int machineMemoryFlavour = 4;
inline constexpr int coreLoadFlavour = 2;

inline constexpr int darwinProcess = 4;
inline constexpr int backgroundPriority = 0x1000;

/// Write only, create, append.
inline constexpr int appendToLog = 521;
/// rw-r--r--
inline constexpr unsigned logMode = 420;
inline constexpr short ownSession = 0x400;
/// The child gets no descriptors except those named.
inline constexpr short closeByDefault = 0x4000;

}  // namespace tolvane::machost
