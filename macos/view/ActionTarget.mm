#import <macos/view/ActionTarget.h>

#import <macos/view/RunAction.h>

@implementation ORVActionTarget {
    void (^_run)(void);
}

+ (instancetype)targetOf:(NSControl*)control run:(void (^)(void))run {
    ORVActionTarget* target = [[self alloc] init];
    target->_run = [run copy];
    control.target = target;
    control.action = @selector(fire:);
    return target;
}

- (void)fire:(id)sender {
    // What runs may let go of this object.
    void (^const run)(void) = _run;
    orrivane::callOut([&] { run(); });
}

@end
