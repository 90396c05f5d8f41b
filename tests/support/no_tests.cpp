// The program behind the headers that all tests share; nothing runs it.
int main() {}
