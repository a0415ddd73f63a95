// Compiled with the include folders of one layer: QY_SEEN must be visible there, QY_UNSEEN (a
// header of a higher layer) must not.
#if !__has_include(QY_SEEN)
#error "a header of this layer or a lower one is not visible"
#endif
#if __has_include(QY_UNSEEN)
#error "a header of a higher layer is visible"
#endif
int main() { return 0; }
