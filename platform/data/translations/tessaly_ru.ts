<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru">
<context>
    <name>keys</name>
    <message>
        <source>@AddNewDictionaries</source>
        <translation>Добавить словари</translation>
    </message>
    <message>
        <source>@AreYouSureYouWanDeletDictionary?</source>
        <translation>Удалить словарь %1 ⇾ %2?</translation>
    </message>
    <message>
        <source>@Back</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>@Busy</source>
        <translation>Подождите</translation>
    </message>
    <message>
        <source>@by</source>
        <translation>Издатель:</translation>
    </message>
    <message>
        <source>@Cancel</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>@CantDownloadDictionariesServerIsRespondingTooLong</source>
        <translation>Пока не удаётся загрузить словари: сервер слишком долго не отвечает.</translation>
    </message>
    <message>
        <source>@Close</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>@ContinueDownloading</source>
        <translation>Продолжить</translation>
    </message>
    <message>
        <source>@DatePublished</source>
        <translation>Дата публикации</translation>
    </message>
    <message>
        <source>@Delete</source>
        <translation>Удалить</translation>
    </message>
    <message numerus="yes">
        <source>@DictionariesHaveBeenDownloaded</source>
        <translation>
            <numerusform>Загружен %1 словарь</numerusform>
            <numerusform>Загружено %1 словаря</numerusform>
            <numerusform>Загружено %1 словарей</numerusform>
        </translation>
    </message>
    <message>
        <source>@DictionaryPackage</source>
        <translation>Пакет словарей</translation>
    </message>
    <message>
        <source>@DictionaryWasDeleted</source>
        <translation>Словарь %1 ⇾ %2 удалён.</translation>
    </message>
    <message>
        <source>@Download</source>
        <translation>Загрузить</translation>
    </message>
    <message>
        <source>@DownloadFailedCheckYourNetworkConnectionAndTryAgain</source>
        <translation>Не удалось выполнить загрузку. Проверьте подключение к сети и повторите попытку.</translation>
    </message>
    <message numerus="yes">
        <source>@DownloadingDictionaries</source>
        <translation>
            <numerusform>Загрузка %1 словаря</numerusform>
            <numerusform>Загрузка %1 словарей</numerusform>
            <numerusform>Загрузка %1 словарей</numerusform>
        </translation>
    </message>
    <message>
        <source>@DownloadMorphology</source>
        <translation>Загрузить морфологию %s</translation>
    </message>
    <message>
        <source>@DoYouWantToStopTheDownload</source>
        <translation>Остановить загрузку?</translation>
    </message>
    <message>
        <source>@Info</source>
        <translation>Сведения</translation>
    </message>
    <message>
        <source>@InstalledMorphology</source>
        <translation>%s (установлена)</translation>
    </message>
    <message>
        <source>@InstallingMorphology</source>
        <translation>Установка морфологии %s</translation>
    </message>
    <message>
        <source>@InsufficientStorageSpace</source>
        <translation>Недостаточно места в памяти. Освободите место и повторите попытку.</translation>
    </message>
    <message>
        <source>@Languages</source>
        <translation>Языки</translation>
    </message>
    <message>
        <source>@LongPress</source>
        <translation>Долгое нажатие</translation>
    </message>
    <message>
        <source>@Morphology</source>
        <translation>Морфология</translation>
    </message>
    <message>
        <source>@MorphologyHasBeenInstalled</source>
        <translation>Морфология %s установлена</translation>
    </message>
    <message>
        <source>@No</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>@NoInformationAboutDictionary</source>
        <translation>Нет сведений об этом словаре</translation>
    </message>
    <message>
        <source>@NoInstalledDictionaries</source>
        <translation>Нет установленных словарей</translation>
    </message>
    <message>
        <source>@NoNewDictionaries</source>
        <translation>Новых словарей нет.</translation>
    </message>
    <message>
        <source>@OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>@Other</source>
        <translation>Другие</translation>
    </message>
    <message>
        <source>@Progress</source>
        <translation>Ход выполнения</translation>
    </message>
    <message>
        <source>@Scroll</source>
        <translation>Прокрутка</translation>
    </message>
    <message>
        <source>@ScrollDown</source>
        <translation>Прокрутить вниз</translation>
    </message>
    <message>
        <source>@ScrollUp</source>
        <translation>Прокрутить вверх</translation>
    </message>
    <message>
        <source>@SelectDictionariesToDownload</source>
        <translation>Выбор словарей для загрузки</translation>
    </message>
    <message>
        <source>@SelectDictionary</source>
        <translation>Выбор словаря</translation>
    </message>
    <message>
        <source>@Stop</source>
        <translation>Остановить</translation>
    </message>
    <message>
        <source>@SuccessfullyDownloaded</source>
        <translation>Загрузка завершена</translation>
    </message>
    <message>
        <source>@Terminate</source>
        <translation>Прервать</translation>
    </message>
    <message>
        <source>@ThereIsAnIssueWithDownloadingSelectedDictionaries</source>
        <translation>Не удалось загрузить выбранные словари. Повторите попытку позже.</translation>
    </message>
    <message>
        <source>@Unavailable</source>
        <translation>недоступно</translation>
    </message>
    <message>
        <source>@Wait</source>
        <translation>Подождать</translation>
    </message>
    <message>
        <source>@Yes</source>
        <translation>Да</translation>
    </message>
    <message>
        <source>@AgentConnecting</source>
        <translation>Подключение…</translation>
    </message>
    <message>
        <source>@AgentNoNetwork</source>
        <translation>Нет доступной сети</translation>
    </message>
    <message>
        <source>@ReaderChooseDictionary</source>
        <translation>Выбрать словарь</translation>
    </message>
    <message>
        <source>@ReaderDictionaries</source>
        <translation>Словари</translation>
    </message>
    <message>
        <source>@ReaderDictionaryBroken</source>
        <translation>Словарь «%1» повреждён, его нельзя прочитать.</translation>
    </message>
    <message>
        <source>@ReaderDictionaryMissing</source>
        <translation>Словаря «%1» больше нет на этом устройстве.</translation>
    </message>
    <message>
        <source>@ReaderNextPage</source>
        <translation>Следующая страница</translation>
    </message>
    <message>
        <source>@ReaderNoDictionary</source>
        <translation>Словарь ещё не выбран.</translation>
    </message>
    <message>
        <source>@ReaderNoDictionaryShort</source>
        <translation>Словарь не выбран</translation>
    </message>
    <message>
        <source>@ReaderNoEntry</source>
        <translation>В этом словаре нет слова «%1».</translation>
    </message>
    <message>
        <source>@ReaderPage</source>
        <translation>Страница %1 из %2</translation>
    </message>
    <message>
        <source>@ReaderPreviousPage</source>
        <translation>Предыдущая страница</translation>
    </message>
    <message>
        <source>@ReaderTexts</source>
        <translation>Тексты</translation>
    </message>
</context>
</TS>
