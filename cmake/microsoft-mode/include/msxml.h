// Empty: MinGW declares these interfaces without identifiers. <comdef.h> makes smart pointers of
// what is declared.
