// Stand-in for <MacTypes.h> of Apple's SDK (the LP64 branch), for the Linux syntax check of
// src/macos only. Declarations copied from MacTypes.h of the macOS 14.2 SDK.
#pragma once

// MacTypes.h
typedef unsigned char UInt8;
typedef signed char SInt8;
typedef unsigned short UInt16;
typedef signed short SInt16;
typedef unsigned int UInt32;
typedef signed int SInt32;
typedef signed long long SInt64;
typedef unsigned long long UInt64;
// Memory Manager types: a global `Handle` that a C++ type's own `Handle` must not be confused with.
typedef char* Ptr;
typedef Ptr* Handle;
typedef SInt32 OSStatus;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef UInt32 OptionBits;
typedef unsigned long ItemCount;
typedef unsigned long ByteCount;
typedef unsigned char Boolean;

// MacTypes.h
enum { noErr = 0 };
