#import <macos/appkit/TaskLauncher.h>

#import <macos/appkit/Conversions.h>

#import <Foundation/Foundation.h>

namespace orrivane {

bool TaskLauncher::launch(const std::string& path, const std::vector<std::string>& arguments) {
    auto* words = [NSMutableArray<NSString*> array];
    for (const auto& argument : arguments)
        [words addObject:toNSString(argument)];
    auto* task = [[NSTask alloc] init];
    task.executableURL = [NSURL fileURLWithPath:toNSString(path) isDirectory:NO];
    task.arguments = words;
    task.standardInput = NSFileHandle.fileHandleWithNullDevice;
    task.standardOutput = NSFileHandle.fileHandleWithNullDevice;
    task.standardError = NSFileHandle.fileHandleWithNullDevice;
    // The task collects its process when that ends, provided that it lives that long.
    __block NSTask* kept = task;
    task.terminationHandler = ^(NSTask*) {
      kept = nil;
    };
    const bool launched = [task launchAndReturnError:nil];
    if (!launched)
        task.terminationHandler = nil;
    return launched;
}

} // namespace orrivane
