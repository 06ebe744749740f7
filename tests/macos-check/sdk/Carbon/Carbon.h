// Stand-in for <Carbon/Carbon.h>, for the Linux syntax check of src/macos only: the Carbon event
// manager's hot key subset, copied from the macOS 14.2 SDK headers named above each group (the
// same text as the project's Apple API reference).
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <MacTypes.h>

extern "C" {

// CarbonEventsCore.h
typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef OSType EventParamName;
typedef OSType EventParamType;
typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef inHandlerCallRef, EventRef inEvent,
                                        void* inUserData);
typedef EventHandlerProcPtr EventHandlerUPP;
struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;
enum { eventNotHandledErr = -9874 };
// The Mach-O universal procedure pointer is the function pointer itself.
inline EventHandlerUPP NewEventHandlerUPP(EventHandlerProcPtr userRoutine) {
    return userRoutine;
}
extern OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler,
                                    ItemCount inNumTypes, const EventTypeSpec* inList,
                                    void* inUserData, EventHandlerRef* outRef);
extern OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef);
extern OSStatus GetEventParameter(EventRef inEvent, EventParamName inName,
                                  EventParamType inDesiredType, EventParamType* outActualType,
                                  ByteCount inBufferSize, ByteCount* outActualSize, void* outData);
extern OSType GetEventClass(EventRef inEvent);
extern UInt32 GetEventKind(EventRef inEvent);

// CarbonEvents.h
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;
struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
typedef struct EventHotKeyID EventHotKeyID;
enum { kEventClassKeyboard = 'keyb' };
enum { kEventHotKeyPressed = 5, kEventHotKeyReleased = 6 };
enum { kEventParamDirectObject = '----' };
enum { typeEventHotKeyID = 'hkid' };
extern EventTargetRef GetEventDispatcherTarget(void) AVAILABLE_MAC_OS_X_VERSION_10_0_AND_LATER;
extern EventTargetRef GetApplicationEventTarget(void) AVAILABLE_MAC_OS_X_VERSION_10_0_AND_LATER;
extern OSStatus RegisterEventHotKey(UInt32 inHotKeyCode, UInt32 inHotKeyModifiers,
                                    EventHotKeyID inHotKeyID, EventTargetRef inTarget,
                                    OptionBits inOptions, EventHotKeyRef* outRef);
extern OSStatus UnregisterEventHotKey(EventHotKeyRef inHotKey);

// Events.h
enum {
    cmdKeyBit = 8,
    shiftKeyBit = 9,
    alphaLockBit = 10,
    optionKeyBit = 11,
    controlKeyBit = 12,
};
enum {
    cmdKey = 1 << cmdKeyBit,
    shiftKey = 1 << shiftKeyBit,
    alphaLock = 1 << alphaLockBit,
    optionKey = 1 << optionKeyBit,
    controlKey = 1 << controlKeyBit,
};
enum {
    kVK_ANSI_B = 0x0B,
    kVK_ANSI_M = 0x2E,
    kVK_Return = 0x24,
    kVK_Escape = 0x35,
    kVK_LeftArrow = 0x7B,
    kVK_RightArrow = 0x7C,
    kVK_DownArrow = 0x7D,
    kVK_UpArrow = 0x7E,
};

} // extern "C"
