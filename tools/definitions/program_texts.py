"""Texts of the program itself: (English, Japanese). The English one is the key."""

PROGRAM_TEXTS = (
    # Start and end
    ("It is started already.", "既に起動しています。"),
    ("Initialize...", "初期化中..."),
    ("loading Block Info.", "ブロック情報を読み込んでいます。"),
    ("loading Label Info.", "ラベル情報を読み込んでいます。"),
    ("loading Data Info.", "データ情報を読み込んでいます。"),
    ("Not Found MultiSelect.ini", "MultiSelect.iniが見つかりません。"),
    ("Quit?", "終了しますか？"),
    # Menus and toolbar
    ("FileMenu", "ファイル(&F)"),
    ("EditMenu", "編集(&E)"),
    ("KXMenu", "KX(&K)"),
    ("OptionMenu", "オプション(&O)"),
    ("HelpMenu", "ヘルプ(&H)"),
    ("Open", "開く"),
    ("Save", "保存"),
    ("Exit", "終了"),
    ("Copy", "コピー"),
    ("Paste", "貼り付け"),
    ("Comm", "通信設定"),
    ("Recv", "受信"),
    ("Send", "送信"),
    ("Option", "オプション"),
    ("Help", "ヘルプ"),
    ("Version", "バージョン情報"),
    # Editing
    ("It is outside the setting range.", "設定範囲外です。"),
    ("InputRange", "入力範囲"),
    ("It cannot set equivalent.", "同じ値は設定できません。"),
    ("This Parameter change sure?", "このパラメータを変更しますか？"),
    ("Please acquire the up-to-date data from the equipment.", "機器から最新データを受信してください。"),
    # Communication settings
    ("There was no response.", "応答がありません。"),
    ("It does not correspond to this model.", "この機種には対応していません。"),
    ("Nothing", "なし"),
    # Transfers
    ("It reads out from the KX?", "KXから読み出しますか？"),
    ("Write to the KX?", "KXに書き込みますか？"),
    ("Transfer All Data.", "全データを転送します。"),
    ("Transfer All Data.Sure?", "全データを転送します。よろしいですか？"),
    ("Model number is different.", "形式が異なります。"),
    ("Reception error occurred.", "受信エラーが発生しました。"),
    ("It was cancelled.", "中止しました。"),
    ("Sending...", "転送中..."),
    ("It is forwarding it. Please wait for a while.", "転送しています。しばらくお待ちください。"),
    # Message box
    ("OK", "OK"),
    ("Cancel", "キャンセル"),
    ("Stop", "中止"),
    ("Retrial", "再試行"),
    ("Disregard", "無視"),
    ("Yes", "はい"),
    ("No", "いいえ"),
    # Version
    ("VersionInfo", "バージョン情報"),
    ("Ver.", "Ver."),
)

# Keys that are not themselves the English wording.
ENGLISH_WORDING = {
    "FileMenu": "&File",
    "EditMenu": "&Edit",
    "KXMenu": "&KX",
    "OptionMenu": "&Option",
    "HelpMenu": "&Help",
    "InputRange": "Input range",
    "VersionInfo": "Version information",
}

# Captions, fonts and tool tips by form: {section: [(key, English, Japanese), ...]}
FORM_TEXTS = {}
