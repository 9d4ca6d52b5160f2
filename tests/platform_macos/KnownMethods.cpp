#include "tests/platform_macos/FakeRuntime.h"

namespace tolvane::machost {

// Written by hand, after the names that Apple documents. A class method stands under its class like the others.
const std::vector<KnownMethod>& knownMethods() {
    static const std::vector<KnownMethod> methods = {
        {"NSObject", "alloc", "@"},
        {"NSObject", "new", "@"},
        {"NSObject", "autorelease", "@"},
        {"NSObject", "isKindOfClass:", "B@"},

        {"NSString", "stringWithUTF8String:", "@*"},
        {"NSString", "UTF8String", "*"},
        {"NSURL", "fileURLWithPath:", "@@"},
        {"NSURL", "path", "@"},
        {"NSArray", "count", "Q"},
        {"NSArray", "objectAtIndex:", "@Q"},
        {"NSArray", "firstObject", "@"},
        {"NSError", "localizedDescription", "@"},

        {"NSDictionary", "dictionary", "@"},
        {"NSDictionary", "dictionaryWithObject:forKey:", "@@@"},
        {"NSDictionary", "objectForKey:", "@@"},
        {"NSDictionary", "allKeys", "@"},
        {"NSMutableDictionary", "dictionary", "@"},
        {"NSMutableDictionary", "setObject:forKey:", "v@@"},

        {"NSNumber", "numberWithBool:", "@B"},
        {"NSNumber", "numberWithLongLong:", "@q"},
        {"NSNumber", "numberWithDouble:", "@d"},
        {"NSNumber", "objCType", "*"},
        {"NSNumber", "boolValue", "B"},
        {"NSNumber", "longLongValue", "q"},
        {"NSNumber", "doubleValue", "d"},
        {"NSDate", "dateWithTimeIntervalSinceReferenceDate:", "@d"},
        {"NSDate", "timeIntervalSinceReferenceDate", "d"},

        {"NSWorkspace", "sharedWorkspace", "@"},
        {"NSWorkspace", "notificationCenter", "@"},
        {"NSWorkspace", "frontmostApplication", "@"},
        {"NSWorkspace", "openApplicationAtURL:configuration:completionHandler:", "v@@@"},
        {"NSWorkspace", "openURL:", "B@"},
        {"NSWorkspace", "selectFile:inFileViewerRootedAtPath:", "B@@"},
        {"NSWorkspace", "iconForFile:", "@@"},
        {"NSWorkspaceOpenConfiguration", "configuration", "@"},
        {"NSWorkspaceOpenConfiguration", "setPromptsUserIfNeeded:", "vB"},
        {"NSWorkspaceOpenConfiguration", "setActivates:", "vB"},
        {"NSWorkspaceOpenConfiguration", "setAddsToRecentItems:", "vB"},
        {"NSNotificationCenter", "addObserverForName:object:queue:usingBlock:", "@@@@@"},
        {"NSNotificationCenter", "removeObserver:", "v@"},
        {"NSNotification", "userInfo", "@"},
        {"NSOperationQueue", "mainQueue", "@"},

        {"NSRunningApplication", "runningApplicationsWithBundleIdentifier:", "@@"},
        {"NSRunningApplication", "bundleURL", "@"},
        {"NSRunningApplication", "bundleIdentifier", "@"},
        {"NSRunningApplication", "terminate", "B"},
        {"NSRunningApplication", "forceTerminate", "B"},
        {"NSRunningApplication", "isTerminated", "B"},

        {"NSBundle", "initWithPath:", "@@"},
        {"NSBundle", "bundleIdentifier", "@"},
        {"NSBundle", "mainBundle", "@"},
        {"NSFileManager", "defaultManager", "@"},
        {"NSFileManager", "displayNameAtPath:", "@@"},
        {"NSFileManager", "URLsForDirectory:inDomains:", "@QQ"},

        {"NSImage", "CGImageForProposedRect:context:hints:", "@^@@"},
        {"NSBitmapImageRep", "initWithCGImage:", "@@"},
        {"NSBitmapImageRep", "representationUsingType:properties:", "@Q@"},
        {"NSData", "dataWithContentsOfFile:", "@@"},
        {"NSData", "writeToFile:atomically:", "B@B"},
        {"NSPropertyListSerialization", "propertyListWithData:options:format:error:", "@@Q^^"},

        {"NSUserDefaults", "standardUserDefaults", "@"},
        {"NSUserDefaults", "objectForKey:", "@@"},
        {"NSUserDefaults", "setObject:forKey:", "v@@"},
        {"NSPasteboard", "generalPasteboard", "@"},
        {"NSPasteboard", "clearContents", "q"},
        {"NSPasteboard", "setString:forType:", "B@@"},
        {"NSApplication", "sharedApplication", "@"},
        {"NSApplication", "setActivationPolicy:", "Bq"},
        {"NSApplication", "activate", "v"},

        {"NSProcessInfo", "processInfo", "@"},
        {"NSProcessInfo", "activeProcessorCount", "Q"},

        {"UNUserNotificationCenter", "currentNotificationCenter", "@"},
        {"UNUserNotificationCenter", "setDelegate:", "v@"},
        {"UNUserNotificationCenter", "requestAuthorizationWithOptions:completionHandler:", "vQ@"},
        {"UNUserNotificationCenter", "addNotificationRequest:withCompletionHandler:", "v@@"},
        {"UNMutableNotificationContent", "setTitle:", "v@"},
        {"UNMutableNotificationContent", "setBody:", "v@"},
        {"UNMutableNotificationContent", "setUserInfo:", "v@"},
        {"UNNotificationRequest", "requestWithIdentifier:content:trigger:", "@@@@"},
        {"UNNotificationRequest", "content", "@"},
        {"UNNotificationResponse", "notification", "@"},
        {"UNNotification", "request", "@"},
        {"UNNotificationContent", "userInfo", "@"},

        {"SMAppService", "mainAppService", "@"},
        {"SMAppService", "status", "q"},
        {"SMAppService", "registerAndReturnError:", "B^"},
        {"SMAppService", "unregisterAndReturnError:", "B^"},
        {"SMAppService", "openSystemSettingsLoginItems", "v"},
    };
    return methods;
}

}  // namespace tolvane::machost
