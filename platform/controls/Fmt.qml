pragma Singleton
import QtQuick

// Texts with arguments.
QtObject {
    // The translation of `key` with each "%s" replaced by the next argument. One that is undefined, null or missing is
    // rendered as nothing, together with a blank that it leaves over.
    function sprintfTr(key: string, values): string {
        const pieces = qsTr(key).split("%s")
        let text = pieces[0]
        for (let i = 1; i < pieces.length; ++i) {
            const value = String(values[i - 1] ?? "")
            const isBlankOver = value === "" && pieces[i].startsWith(" ") && (text === "" || text.endsWith(" "))
            text += value + (isBlankOver ? pieces[i].slice(1) : pieces[i])
        }
        return text.trim()
    }
}
