#include "session.h"

int main() {
    const vorlen::Session session;
    use(session);
}
