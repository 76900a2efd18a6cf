#import <macos/appkit/Conversions.h>

namespace orrivane {

NSString* toNSString(std::string_view text) {
    const auto decoded = [text](NSStringEncoding encoding) {
        return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:encoding];
    };
    NSString* utf8 = decoded(NSUTF8StringEncoding);
    return utf8 != nil ? utf8 : decoded(NSISOLatin1StringEncoding);
}

std::string toString(NSString* text) {
    // A string with half a surrogate pair has no UTF8String.
    NSData* bytes = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    if (bytes.length == 0)
        return {};
    return {static_cast<const char*>(bytes.bytes), bytes.length};
}

} // namespace orrivane
